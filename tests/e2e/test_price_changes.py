"""A sale with its price changed in the real program: on a demo shop an item
is scanned, the Adjust button gives it a new price, Ctrl+K adds a carrier bag
not kept in stock, Transactions > Add discount takes 1.55 off the sale, and the
sale is paid in cash. The day's sales log must carry the discounted figures and
the items log the new price, the bag as a line of its own in category 18; the
pole must have shown the bag as it was added."""

import struct
import subprocess
import time

import harness
from harness import Failure, check, f32, put, text_at

ITEM_BOX_BORDER = "#1F4E79"


def item_box_top(s, wid):
    """Where the item box starts in the window: the first pixel of its border
    down a column through it, right of its caption. The sale buttons are laid out from there."""
    x, y, w, h = s.geometry(wid)
    png = s.tmp + "/screen.png"
    s.screenshot(png)
    out = subprocess.run(["convert", png, "-crop", "1x400+%d+%d" % (x + 150, y), "txt:-"],
                         capture_output=True, text=True, check=True).stdout
    for line in out.splitlines()[1:]:
        if ITEM_BOX_BORDER in line.upper():
            return int(line.split(":")[0].split(",")[1])
    raise Failure("no item box in the window")


def gone(s, title):
    """Waits for the form titled `title` to close."""
    deadline = time.time() + 10
    while s.xdotool("search", "--onlyvisible", "--name", "^%s$" % title, check_rc=False):
        check(time.time() < deadline, "%r stayed open" % title)
        time.sleep(0.2)


def sale(new_session):
    s = new_session(screen=(1280, 1024))
    pole, drawer = s.with_pole_and_drawer(
        lambda cfg: put(cfg, 40674, "i", 0))  # non_inventory_taxable: no
    try:
        wid = s.open_till()
        pole.received(wait=1.0)
        s.scan(wid, 1001)
        pole.received()

        # Adjust, the last of the sale buttons, 148 below the item box's top.
        top = item_box_top(s, wid)
        s.xdotool("mousemove", "--window", wid, 247 + 34, top + 148 + 20, "click", "1")
        s.fill("Adjust item price", "1500")
        gone(s, "Adjust item price")

        # A bag off the shelf: Ctrl+K, its name, Tab to the price, Enter adds it.
        s.key(wid, "ctrl+k")
        form = s.fill("Non inventory sale", "Bag", "Tab")
        s.type(form, "0.50")
        s.key(form, "Return")
        got = pole.received()
        check(got == b"\x1b\x40Bag 0.50", "the pole showed %r for the bag" % got)

        # The menu by keys: Alt, right to Transactions, down to Add discount.
        s.key(wid, "alt", *(["Right"] * 9), "Down")
        s.xdotool("key", "--delay", "60", *(["Down"] * 7), "Return")
        s.fill("Discount total", "155")
        gone(s, "Discount total")
        pole.received(wait=1.0)

        s.key(wid, "F5")
        got = pole.received()
        check(got == b"\x1b\x40Total: 16.65", "the pole showed %r for the total" % got)
        s.pay_cash(wid, "2000", press_f5=False)
        time.sleep(1.0)
        check(s.close() == 0, "tilo did not end cleanly")
    finally:
        pole.close()
        drawer.close()

    sales = s.file(s.today("saleslog.dat"))
    check(len(sales) == 950, "saleslog.dat is %d bytes" % len(sales))
    figures = struct.unpack_from("<8f", sales, 32)
    # The discount shared out: 0.05 of it off the bag, the rest off the taxed
    # part, and tax 1 down with it.
    expected = (f32(0.45), f32(13.50), f32(13.95), f32(2.70), 0.0, f32(11.20), f32(16.65),
                f32(1.55))
    check(figures == expected, "saleslog.dat holds %r, not %r" % (figures, expected))
    check(struct.unpack_from("<i", sales, 28)[0] == 2, "the sale does not have two lines")

    items = s.file(s.today("itemslog.dat"))
    check(len(items) == 208, "itemslog.dat is %d bytes" % len(items))
    for at, (number, category, description, untaxed, taxed, tax, cost, total) in zip(
            (0, 104), ((1001, 0, "LONDON DRY GIN 70CL", 0.0, 15.00, 3.00, 11.20, 18.00),
                       (0, 18, "Bag", 0.50, 0.0, 0.0, 0.0, 0.50))):
        got_category, _, got_number = struct.unpack_from("<3q", items, at + 8)
        check((got_number, got_category) == (number, category),
              "line at %d is item %d in category %d" % (at, got_number, got_category))
        check(text_at(items, at + 32, 40) == description, "line at %d is not %s" % (at, description))
        got = struct.unpack_from("<7f", items, at + 72)
        want = (f32(untaxed), f32(taxed), f32(tax), 0.0, f32(cost), 0.0, f32(total))
        check(got == want, "line of %s holds %r, not %r" % (description, got, want))


if __name__ == "__main__":
    harness.main(sale)
