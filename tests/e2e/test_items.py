"""Keeping items from the menus alone in the real program. A new shop holds the
24 built-in pictures, and a picture chosen with "Add custom image to item" is
copied byte for byte to m1001.bmp with the item's own_picture 1 (the sale
screen showing it is kept as a screenshot when TILO_SCREENSHOTS names a
folder). Form 800 adds an item, it is sold for cash, F3 amends its price,
Ctrl+V books 5 in, a bundle made in the bundle form sells it again, and Delete
takes it away. After the close-down the bytes of film.dat, m1001.bmp, the day's
ininvent.dat and bun4.dat are read back."""

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


def bmp(width, height):
    """A 24-bit bitmap: a dark frame round a bright target, bottom row first."""
    stride = (width * 3 + 3) & ~3
    rows = []
    for y in range(height):
        row = bytearray()
        for x in range(width):
            d = min(x, y, width - 1 - x, height - 1 - y)
            colour = [(40, 40, 40), (0, 200, 255), (255, 255, 255), (0, 0, 220)][min(d // 6, 3)]
            row += bytes(colour)
        rows.append(bytes(row) + bytes(stride - len(row)))
    pixels = b"".join(rows)
    header = struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 2835, 2835, 0, 0)
    return header + info + pixels


def custom_picture(s, wid, chosen):
    """Inventory > Add custom image to item: the file, then item 1001."""
    s.key(wid, "alt+f", "Right", "Up", "Return")
    chooser = s.form("Add custom image to item")
    time.sleep(0.3)
    s.type(chooser, chosen)
    s.key(chooser, "Return")
    prompt = s.form("Picture")
    s.key(prompt, "ctrl+a")
    s.type(prompt, "1001")
    s.key(prompt, "Return")
    time.sleep(0.5)
    s.answer("Picture")
    time.sleep(0.5)
    if os.environ.get("TILO_SCREENSHOTS"):
        # The ALC category, where item 1001 stands beside two built-in pictures.
        x, y, _, _ = s.geometry(wid)
        s.xdotool("mousemove", x + 525, y + 115, "click", "1")
        time.sleep(0.8)
        s.screenshot(os.path.join(os.environ["TILO_SCREENSHOTS"], "sale-screen-pictures.png"))


def test(new_session):
    s = new_session()
    for n in range(1, 25):
        check(s.file("STOCK%d.bmp" % n)[:2] == b"BM", "built-in picture %d placed" % n)
    chosen = os.path.join(s.tmp, "shelf photo.bmp")
    with open(chosen, "wb") as f:
        f.write(bmp(64, 64))
    wid = s.open_till()
    custom_picture(s, wid, chosen)

    # F4: the number, a description, the prices and a stock of 3, then OK.
    s.key(wid, "F4")
    item = s.form("New inventory")
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
    prompt = s.form("Amend item")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(prompt, "Return")
    item = s.form("Amend inventory")
    s.key(item, *(["Tab"] * 7))
    s.xdotool("type", "--delay", "40", "3.00")
    s.key(item, "Return")
    time.sleep(1.0)

    # Ctrl+V: 5 received.
    s.key(wid, "ctrl+v")
    prompt = s.form("Inventory received")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(prompt, "Return")
    receive = s.form("Receive Inventory")
    s.xdotool("type", "--delay", "40", "5")
    s.key(receive, "Return")
    s.answer("Updated quantity")

    # New bundle: its number, a description, the item in its first row.
    s.menu(wid, 1, 3)
    bundle = s.form("Add inventory bundle")
    s.key(bundle, "shift+Tab")
    s.xdotool("type", "--delay", "40", str(BUNDLE))
    s.key(bundle, "Tab")
    s.xdotool("type", "--delay", "40", "e2e bundle")
    # The date picker takes a Tab for each of its day, month and year.
    s.key(bundle, *(["Tab"] * 13), "space")
    prompt = s.form("Select")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(prompt, "Return")
    time.sleep(0.5)
    s.key(bundle, "Return")
    time.sleep(1.0)
    s.scan(wid, BUNDLE)
    s.pay_cash(wid, "5000")

    # Delete, after "Are you sure?".
    s.menu(wid, 1, 2)
    prompt = s.form("Delete item")
    s.xdotool("type", "--delay", "40", str(ITEM))
    s.key(prompt, "Return")
    s.answer("%d Item: E2E WIDGET" % ITEM)
    time.sleep(1.0)
    check(s.close() == 0, "tilo did not end cleanly")

    film = records(s.file("film.dat"))
    check(s.file("m1001.bmp") == open(chosen, "rb").read(), "m1001.bmp is the chosen file")
    check(read_at(dict(film)[1001], 1562, "i") == 1, "own_picture of 1001")
    check(read_at(dict(film)[1002], 1562, "i") == 0, "own_picture of 1002 untouched")
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
