"""Keeping one item from the menus alone in the real program: form 800 adds it,
it is sold for cash, F3 amends its price, Ctrl+V books 5 in, a bundle made in
the bundle form sells it again, and Delete takes it away. After the close-down
the bytes of film.dat, the day's ininvent.dat and bun4.dat are read back."""

import datetime
import os
import re
import struct
import subprocess
import time

import harness
from harness import FILM_RECORD, check, f32, read_at, text_at

ITEM, BUNDLE = 777777, 777778
SCREENSHOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "docs",
                          "screenshots", "item_form_800.png")


def records(film):
    return [(read_at(film, at, "q"), film[at:at + FILM_RECORD])
            for at in range(0, len(film), FILM_RECORD)]


def form(s, title):
    wid = s.find_window(title)
    time.sleep(0.5)
    return wid


def inventory_menu(s, wid, entry):
    """The Inventory menu, the one after &File, by keys: its `entry`-th line."""
    s.key(wid, "alt+f", "Right", *(["Down"] * entry), "Return")


def test(new_session):
    s = new_session()
    wid = s.open_till()

    # F4: the number, a description, the prices and a stock of 3, then OK.
    s.key(wid, "F4")
    item = form(s, "New inventory")
    s.key(item, "shift+Tab")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(item, "Tab")
    s.xdotool("type", "--delay", "40", "e2e widget")
    s.key(item, *(["Tab"] * 5))
    s.xdotool("type", "--delay", "40", "1.50")
    s.key(item, "Tab", "Tab")
    s.xdotool("type", "--delay", "40", "2.5")
    s.key(item, *(["Tab"] * 7))
    s.xdotool("type", "--delay", "40", "3")
    if os.environ.get("TILO_SCREENSHOTS"):
        subprocess.run(["import", "-window", item, SCREENSHOT], env=s._env(), check=True)
    s.key(item, "Return")
    time.sleep(1.0)

    s.scan(wid, ITEM)
    s.pay_cash(wid, "5000")

    # F3: the price becomes 3.00.
    s.key(wid, "F3")
    prompt = form(s, "Amend item")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(prompt, "Return")
    item = form(s, "Amend inventory")
    s.key(item, *(["Tab"] * 7))
    s.xdotool("type", "--delay", "40", "3.00")
    s.key(item, "Return")
    time.sleep(1.0)

    # Ctrl+V: 5 received.
    s.key(wid, "ctrl+v")
    prompt = form(s, "Inventory received")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(prompt, "Return")
    receive = form(s, "Receive Inventory")
    s.xdotool("type", "--delay", "40", "5")
    s.key(receive, "Return")
    s.answer("Updated quantity")

    # New bundle: its number, a description, the item in its first row.
    inventory_menu(s, wid, 3)
    bundle = form(s, "Add inventory bundle")
    s.key(bundle, "shift+Tab")
    s.xdotool("type", "--delay", "40", str(BUNDLE))
    s.key(bundle, "Tab")
    s.xdotool("type", "--delay", "40", "e2e bundle")
    # The date picker takes a Tab for each of its day, month and year.
    s.key(bundle, *(["Tab"] * 13), "space")
    prompt = form(s, "Select")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(prompt, "Return")
    time.sleep(0.5)
    s.key(bundle, "Return")
    time.sleep(1.0)
    s.scan(wid, BUNDLE)
    s.pay_cash(wid, "5000")

    # Delete, after "Are you sure?".
    inventory_menu(s, wid, 2)
    prompt = form(s, "Delete item")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(prompt, "Return")
    s.answer("%d Item: E2E WIDGET" % ITEM)
    time.sleep(1.0)
    check(s.close() == 0, "tilo did not end cleanly")

    film = records(s.file("film.dat"))
    check(ITEM not in dict(film), "the item is still in film.dat")
    deleted = [r for n, r in film if n == -1 and text_at(r, 10, 38) == "E2E WIDGET"[2:]]
    check(len(deleted) == 1, "no deleted record of the item (description bytes 0 and 1 zeroed)")
    r = deleted[0]
    check(read_at(r, 822, "f") == f32(3.0), "retail price %r" % read_at(r, 822, "f"))
    check(read_at(r, 814, "f") == f32(1.5), "cost price %r" % read_at(r, 814, "f"))
    # 3 in stock, one sold twice over, five received.
    check(read_at(r, 670, "i") == 6, "stock %d" % read_at(r, 670, "i"))
    check(read_at(r, 714, "i") == 2, "total sold %d" % read_at(r, 714, "i"))
    check(read_at(r, 1826, "q") == 0 and r[1834] == 0 and r[1839] == 32 and r[1840] == 0,
          "the loan bytes")
    check(r[1777:1786] == bytes(9) and r[1850:1874] == bytes(24), "the trailing words")
    check(read_at(r, 1202, "i") == 1 and read_at(r, 1802, "i") == 0, "picture or bundle flag")

    b = dict(film).get(BUNDLE)
    check(b is not None, "the bundle is not in film.dat")
    check(read_at(b, 1802, "i") == 2, "the bundle flag")
    check(text_at(b, 8, 40) == "E2E BUNDLE", "bundle description %r" % text_at(b, 8, 40))
    check(text_at(b, 270, 20) == str(ITEM), "bundle row 1 %r" % text_at(b, 270, 20))
    check(read_at(b, 1246, "i") == 1 and read_at(b, 1222, "i") == 0, "bundle row 1 quantity")
    check(read_at(b, 822, "f") == 0 and read_at(b, 670, "i") == 0, "a bundle has no price")

    today = datetime.date.today()
    ininvent = s.file(s.today("ininvent.dat"))
    check(ininvent == struct.pack("<qq", ITEM, 5), "ininvent.dat is %r" % ininvent)

    log = s.file("bun4.dat").decode("cp1252")
    entry = re.search(r"\r\nItem %d, E2E WIDGET deleted\.  Date: \d\d:\d\d %02d/%02d/%d\r\n\r\n"
                      % (ITEM, today.day, today.month, today.year), log)
    check(entry, "no delete entry in bun4.dat:\n" + log[-300:])


if __name__ == "__main__":
    harness.main(test)
