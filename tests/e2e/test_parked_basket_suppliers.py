"""Two flows in the real program on demo shops. The first parks a basket with a
note (Ctrl+W), empties the screen and sells another customer's item, brings
the parked basket back (Ctrl+X) and sells it; the day's sales log holds both
sales, the note on the second; after a restart Ctrl+X says "No items", since
nothing parked outlives the run. The second adds two suppliers from the
Suppliers menu, amends the first and deletes the second (the last record of
the file), then reads mans.dat back byte by byte."""

import datetime
import os
import struct
import subprocess
import time

import harness
from harness import check, read_at, text_at
from test_price_changes import item_box_top

MANS_RECORD = 1058
SCREENSHOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "docs",
                          "screenshots", "supplier_form_816.png")


def f32(value):
    return struct.unpack("<f", struct.pack("<f", value))[0]


def pay_cash(s, wid, money):
    s.key(wid, "F5")
    time.sleep(1.0)
    s.xdotool("type", "--delay", "60", money)
    s.xdotool("key", "Return")
    s.answer("Transaction committed, summary")
    time.sleep(0.5)


def parked(new_session):
    s = new_session()
    s.start()
    wid = s.find_window("TILO Retail")
    s.log_on()
    wid = s.find_window("TILO Retail.*")
    time.sleep(1.0)

    for number in ("1001", "2401"):
        s.type(wid, number)
        s.key(wid, "Return")
    s.menu(wid, 9, 8)  # Transactions > Add note
    note = s.form("Add transaction note")
    s.type(note, "Ring Mrs Day")
    s.key(note, "Return")
    s.answer("Transaction note")
    s.key(wid, "ctrl+w")
    s.answer("Basket")

    # The Empty button, the sixth sale button, 98 below the item box's top.
    top = item_box_top(s, wid)
    s.xdotool("mousemove", "--window", wid, 96 + 34, top + 98 + 20, "click", "1")
    time.sleep(0.5)
    s.type(wid, "2401")
    s.key(wid, "Return")
    pay_cash(s, wid, "100")

    s.key(wid, "ctrl+x")
    time.sleep(0.5)
    pay_cash(s, wid, "3000")
    check(s.close() == 0, "tilo did not end cleanly")

    today = datetime.date.today()
    day = "%d/%d/%d/" % (today.year, today.month, today.day)
    sales = s.file(day + "saleslog.dat")
    check(len(sales) == 2 * 950, "saleslog.dat is %d bytes" % len(sales))
    first, second = sales[:950], sales[950:]
    check(read_at(first, 28, "i") == 1 and read_at(second, 28, "i") == 2, "line counts")
    check(read_at(first, 56, "f") == f32(0.84), "first total %r" % read_at(first, 56, "f"))
    check(read_at(second, 56, "f") == f32(22.84), "second total %r" % read_at(second, 56, "f"))
    check(text_at(first, 870, 80) == "", "a note on the first sale")
    check(text_at(second, 870, 80) == "Ring Mrs Day", "note %r" % text_at(second, 870, 80))
    items = s.file(day + "itemslog.dat")
    check([read_at(items, at + 24, "q") for at in range(0, len(items), 104)] == [2401, 1001, 2401],
          "itemslog.dat items")

    # A new run starts with nothing parked, and says so.
    s.start()
    wid = s.find_window("TILO Retail")
    s.log_on()
    wid = s.find_window("TILO Retail.*")
    time.sleep(1.0)
    s.key(wid, "ctrl+x")
    # The one box of that title is "No items".
    s.answer("Reload basket")
    check(s.close() == 0, "tilo did not end cleanly after the restart")


def suppliers(new_session):
    s = new_session()
    s.start()
    wid = s.find_window("TILO Retail")
    s.log_on()
    wid = s.find_window("TILO Retail.*")
    time.sleep(1.0)

    # Add twice: the numbers offered, 1 then 2; the cursor starts in "Name".
    s.menu(wid, 6, 3)
    add = s.form("New supplier")
    s.type(add, "acme foods")
    s.key(add, "Tab")
    s.type(add, "1 high st")
    if os.environ.get("TILO_SCREENSHOTS"):
        subprocess.run(["import", "-window", add, SCREENSHOT], env=s._env(), check=True)
    s.key(add, "Return")
    time.sleep(1.0)
    s.menu(wid, 6, 3)
    add = s.form("New supplier")
    s.type(add, "bolt and nut")
    s.key(add, "Return")
    time.sleep(1.0)

    # Amend 1: "Ext" keeps its case; "Credit limit" takes words.
    s.menu(wid, 6, 4)
    prompt = s.form("Amend supplier")
    s.key(prompt, "ctrl+a")
    s.type(prompt, "1")
    s.key(prompt, "Return")
    time.sleep(0.5)
    amend = s.form("Amend supplier")
    s.key(amend, *(["Tab"] * 6))  # Name -> Ext
    s.type(amend, "x12b")
    s.key(amend, *(["Tab"] * 8))  # Ext -> Credit limit
    s.type(amend, "ask first")
    s.key(amend, "Return")
    time.sleep(1.0)

    # Delete 2, the last record of the file; Find then says it is gone.
    s.menu(wid, 6, 5)
    prompt = s.form("Delete supplier")
    s.key(prompt, "ctrl+a")
    s.type(prompt, "2")
    s.key(prompt, "Return")
    s.answer("Delete supplier")
    s.menu(wid, 6, 0)
    prompt = s.form("Find supplier")
    s.type(prompt, "2")
    s.key(prompt, "Return")
    s.answer("Supplier")
    check(s.close() == 0, "tilo did not end cleanly")

    mans = s.file("mans.dat")
    check(len(mans) % MANS_RECORD == 0, "mans.dat is %d bytes" % len(mans))
    records = {}
    for at in range(0, len(mans), MANS_RECORD):
        records.setdefault(read_at(mans, at, "q"), []).append(mans[at:at + MANS_RECORD])
    check(2 not in records, "supplier 2 is still in mans.dat")
    check(len(records.get(1, [])) == 1, "supplier 1 is not in mans.dat once")
    one = records[1][0]
    expected = bytearray(MANS_RECORD)
    struct.pack_into("<q", expected, 0, 1)
    for offset, width, text in ((8, 42, "ACME FOODS"), (66, 30, "1 HIGH ST"),
                                (186, 20, "x12b"), (754, 40, "ASK FIRST")):
        expected[offset:offset + width] = text.encode("cp1252").ljust(width, b"\0")
    check(one == bytes(expected), "supplier 1 differs: %r" % one[:120])
    gone = [r for r in records.get(-1, []) if text_at(r, 8, 42) == "BOLT AND NUT"]
    check(len(gone) == 1, "no deleted record of supplier 2")
    # The deleted record is the file's last.
    check(read_at(mans, len(mans) - MANS_RECORD, "q") == -1, "the last record is not deleted")


def test(new_session):
    parked(new_session)
    suppliers(new_session)


if __name__ == "__main__":
    harness.main(test)
