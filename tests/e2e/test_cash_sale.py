"""The first whole sale in the real program: on a demo shop made by the
installer, two item numbers typed, F5, the money typed and Enter, the summary
closed with Enter; then the close-down, and every file the sale wrote is read
back: the year's transaction index, the day's sales and items logs, the two
item records, the activity log and the settings. The drawer and the pole hang on
socat pty pairs, and the bytes that reached them are checked too. The shop
speaks Italian on its receipts, which the summary prints by itself on the
built-in PDF printer."""

import datetime
import os
import re
import struct
import time

import harness
from harness import check, f32, find_item, pdf_text, put, put_text, read_at, text_at

def sale(new_session):
    s = new_session(screen=(1280, 1024))
    # A first run makes the settings; then a pole on COM1 and a drawer on COM2.
    def edit(cfg):
        put_text(cfg, 33474, 32, "10")   # pole_cursor2: the second line
        put(cfg, 1016, "q", 1)           # drawer_enabled
        put(cfg, 40694, "i", 1)          # language_index: Italiano
        put(cfg, 40150, "i", 1)          # auto_receipt: the till receipt
        put(cfg, 36, "i", 1)             # receipt_printer_index, and its name:
        put_text(cfg, 32434, 200, "PDF")  # the built-in printer
    pole, drawer = s.with_pole_and_drawer(edit)
    # Without language.ini the wording is the built-in one of the language chosen.
    os.remove(os.path.join(s.shop, "language.ini"))
    film_before = s.file("film.dat")
    settings_before = s.file("wr.cfg")
    try:
        wid = s.open_till()
        pole.received(wait=1.0)
        s.scan(wid, 1001)
        got = pole.received()
        check(got == b"\x1b\x40LONDON DRY G  22.00", "the pole showed %r for 1001" % got)
        s.scan(wid, 2401)
        got = pole.received()
        check(got == b"\x1b\x40CRISPS READY  0.84", "the pole showed %r for 2401" % got)

        # F5: the cash form takes the focus and the pole shows the total.
        s.key(wid, "F5")
        got = pole.received()
        check(got == b"\x1b\x40Total: 22.84", "the pole showed %r for the total" % got)
        s.pay_cash(wid, "2500", summary=False, press_f5=False)

        # The drawer opens, the pole shows tender and change, and the summary waits.
        box = s.find_window("Transaction committed, summary")
        got = drawer.received()
        check(got == b"\x07\x07", "the drawer got %r" % got)
        got = pole.received()
        check(got == b"\x1b\x40Tender: 25.00\nChange: 2.16", "the pole showed %r at the end" % got)
        # The summary stands before the commit: nothing is logged yet.
        check(not s.exists(s.today("saleslog.dat")) or not s.file(s.today("saleslog.dat")),
              "the sale was logged before the summary closed")
        time.sleep(0.3)
        s.key(box, "Return")
        time.sleep(1.0)
        check(s.close() == 0, "tilo did not end cleanly")
    finally:
        pole.close()
        drawer.close()

    today = datetime.date.today()
    clerk = read_at(s.file("wr.cfg"), 34354, "q")  # the clerk logged on

    # The transaction index: its header, then number 1 on today.
    base = s.file("%d/base.dat" % today.year)
    check(base == struct.pack("<iiii", 0, 1, today.day, today.month),
          "base.dat is %r" % base)

    # The sales log: one record of 950 bytes, rebuilt field by field.
    sales = s.file(s.today("saleslog.dat"))
    check(len(sales) == 950, "saleslog.dat is %d bytes" % len(sales))
    sale_time, sale_date = text_at(sales, 124, 20), text_at(sales, 144, 20)
    check(re.fullmatch(r"\d\d:\d\d", sale_time), "sale time %r" % sale_time)
    check(sale_date, "no sale date")
    expected = bytearray(950)
    struct.pack_into("<qqqii", expected, 0, 1, 1, 0, clerk, 2)
    struct.pack_into("<8f", expected, 32, 0.0, f32(19.03), f32(19.03), f32(3.81), 0.0,
                     f32(f32(11.20) + f32(0.30)), f32(22.84), 0.0)
    struct.pack_into("<f", expected, 88, f32(22.84))  # tender_cash: the total, not the 25.00
    put_text(expected, 124, 20, sale_time)
    put_text(expected, 144, 20, sale_date)
    put_text(expected, 354, 40, "Cash")
    check(sales == bytes(expected), "saleslog.dat differs from the sale")

    # The items log: one record of 104 bytes a line.
    items = s.file(s.today("itemslog.dat"))
    check(len(items) == 208, "itemslog.dat is %d bytes" % len(items))
    for at, (number, category, description, price, tax, cost) in zip(
            (0, 104), ((1001, 0, "LONDON DRY GIN 70CL", 18.33, 3.67, 11.20),
                       (2401, 14, "CRISPS READY SALTED", 0.70, 0.14, 0.30))):
        line = bytearray(104)
        struct.pack_into("<qqqq", line, 0, 1, category, 0, number)
        put_text(line, 32, 40, description)
        struct.pack_into("<7fi", line, 72, 0.0, f32(price), f32(tax), 0.0, f32(cost), 0.0,
                         f32(price + tax), clerk)
        check(items[at:at + 104] == bytes(line), "itemslog.dat line of %d differs" % number)

    # The two items: one fewer in stock, one more sold, the moment of the sale;
    # every other byte of film.dat as it was.
    film = bytearray(s.file("film.dat"))
    check(len(film) == len(film_before), "film.dat changed size")
    expected_film = bytearray(film_before)
    # The items are stamped as the sale commits, the sale's time when its cash form
    # opened: a minute may turn between the two.
    committed = text_at(film, find_item(film_before, 1001) + 1810, 5)
    opened = datetime.datetime.strptime(sale_time, "%H:%M")
    check(committed in (sale_time, (opened + datetime.timedelta(minutes=1)).strftime("%H:%M")),
          "the items were stamped at %r, the sale at %r" % (committed, sale_time))
    stamp = "%s%02d/%02d/%d" % (committed, today.day, today.month, today.year)
    for number in (1001, 2401):
        at = find_item(film_before, number)
        put(expected_film, at + 670, "i", read_at(film_before, at + 670, "i") - 1)
        put(expected_film, at + 714, "i", read_at(film_before, at + 714, "i") + 1)
        expected_film[at + 1810:at + 1810 + len(stamp) + 1] = stamp.encode() + b"\0"
    check(film == expected_film, "film.dat differs beyond the two items' stock, sales and date")

    # The activity log's entry for the sale.
    log = s.file("bun4.dat").decode("cp1252")
    entry = re.search(r"\r\n(\d\d:\d\d [^\r\n]*) Sale: 1, Total: 22\.84\r\n"
                      r"1001  LONDON DRY GIN 70CL\r\n2401  CRISPS READY SALTED\r\n"
                      r"Clerk: %d, [^\r\n]*   Items: 2\r\nPayment type: Cash\r\n" % clerk, log)
    check(entry, "no sale entry in bun4.dat:\n" + log[-400:])

    # The settings: the next transaction number and the day's figures.
    cfg = s.file("wr.cfg")
    check(read_at(cfg, 1360, "i") == 2, "transaction_number is not 2")
    check(read_at(cfg, 320, "q") == read_at(settings_before, 320, "q") + 1,
          "today_transactions did not rise")
    check(read_at(cfg, 160, "q") == read_at(settings_before, 160, "q") + 2,
          "today_items did not rise by 2")
    for offset, name in ((41750, "till_takings"), (41814, "sales_total"),
                         (41822, "cash_sales")):
        check(abs(read_at(cfg, offset, "d") - read_at(settings_before, offset, "d") - 22.84)
              < 1e-4, "%s did not rise by 22.84" % name)
    check(read_at(cfg, 3030, "f") == read_at(settings_before, 3030, "f") + 1,
          "count_cash_sales did not rise")

    # The receipt, in the Italian wording, went to printouts/ as a PDF.
    printouts = s.printouts()
    check(len(printouts) == 1, "printouts holds %r" % printouts)
    receipt = pdf_text(printouts[0])
    for words in ("CORNER STORE", "Ricevimento: 1", "LONDON DRY GIN 70CL", "22.00",
                  "CRISPS READY SALTED", "0.84", "Totale: ", "22.84", "Pagamento: Contanti",
                  "Sostituzione del contante: 2.16"):
        check(words in receipt, "the receipt lacks %r:\n%s" % (words, receipt))
    language = s.file("language.ini")
    check(len(language) == 4640 and text_at(language, 0, 80) == "Italiano"
          and text_at(language, 80 * 16, 80) == "Rimborso", "language.ini is not the Italian table")


if __name__ == "__main__":
    harness.main(sale)
