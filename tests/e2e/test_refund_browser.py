"""A refund and the reprints in the real program. A cash sale of one item, paid
exactly, prints its till receipt by itself; the same item is refunded in cash,
which writes the sale back negated and puts the item back in stock; F11 finds
transaction 1: its "Till receipt" prints a page equal to the first, barcode and
all, and its "Invoice" the standard invoice: net amounts, the total of the sales
log, no customer, and a barcode that reads as the transaction number. With
TILO_SCREENSHOTS set, the "Transaction" form and the invoice are kept there."""

import glob
import os
import re
import shutil
import struct
import time

import harness
from harness import barcode, check, pdf_text, put, stock_of, wait_for

SALE = 950
LINE = 104


def refunded(sale, number, sequence):
    """The sale's record as its refund must read: numbered anew, the figures
    negated, paid back in cash, the payment type "Refund"; time and date are
    compared apart."""
    r = bytearray(sale)
    struct.pack_into("<qq", r, 0, number, sequence)
    for at in range(32, 64, 4):
        struct.pack_into("<f", r, at, 0.0 - struct.unpack_from("<f", sale, at)[0])
    struct.pack_into("<f", r, 88, struct.unpack_from("<f", r, 56)[0])
    r[354:394] = b"Refund".ljust(40, b"\0")
    r[124:164] = bytes(40)
    return bytes(r)


def test(new_session):
    s = new_session()
    s.edit("wr.cfg", lambda cfg: (put(cfg, 40150, "i", 1),   # auto_receipt: "Till receipt"
                                  put(cfg, 40650, "i", 2)))  # receipt_barcode
    stock = stock_of(s.file("film.dat"), 1001)

    title = "TILO Retail    Assoc: 1, Administrator"
    wid = s.open_till()

    # Transaction 1: 22.00 paid exactly.
    s.scan(wid, 1001)
    s.pay_cash(wid, "2200")
    wait_for(lambda: len(s.printouts()) == 1, "till receipt")
    check(stock_of(s.file("film.dat"), 1001) == stock - 1, "the sale did not take the item from stock")

    # The same item back: the Refund button, then OK on the refund form (cash,
    # back to stock).
    wid = s.find_window(title)
    s.type(wid, "1001")
    s.key(wid, "Return")
    time.sleep(0.5)
    s.xdotool("mousemove", "--window", wid, 206, 297, "click", "1")
    s.answer("Refund")
    wait_for(lambda: len(s.file(s.today("saleslog.dat"))) == 2 * SALE, "refund in the sales log")
    check(stock_of(s.file("film.dat"), 1001) == stock, "the refund did not put the item back in stock")

    sales, items = s.file(s.today("saleslog.dat")), s.file(s.today("itemslog.dat"))
    sale, refund = sales[:SALE], sales[SALE:]
    got, want = refund[:124] + bytes(40) + refund[164:], refunded(sale, 2, 2)
    check(got == want, "the refund's record is not the sale's negated, from byte %s" %
          [i for i in range(SALE) if got[i] != want[i]][:8])
    check(len(items) == 2 * LINE, "the refund did not log its line")
    check(items[LINE:] == struct.pack("<q", 2) + items[8:LINE],
          "the refund's line is not the sale's line, positive")
    year = glob.glob(os.path.join(s.shop, "[0-9]*", "base.dat"))[0]
    base = open(year, "rb").read()
    check(base[4:16][:4] == struct.pack("<i", 1) and base[16:20] == struct.pack("<i", 2)
          and base[8:16] == base[20:28] and len(base) == 28,
          "base.dat does not hold the sale and the refund on one day")
    check(struct.unpack_from("<i", s.file("wr.cfg"), 1360)[0] == 3,
          "wr.cfg does not hold the next number after the refund")

    # F11, transaction 1, "Till receipt" (four back from OK), "Invoice" (two
    # back from OK), then OK.
    wid = s.find_window(title)
    s.key(wid, "F11")
    s.fill("Display transaction", "1")
    form = s.find_window("Transaction")
    time.sleep(0.5)
    s.keep(form, "transaction-form.png")
    s.key(form, "shift+Tab", "shift+Tab", "shift+Tab", "shift+Tab", "space")
    wait_for(lambda: len(s.printouts()) == 2, "reprint")
    s.key(form, "Tab", "Tab", "space")
    wait_for(lambda: len(s.printouts()) == 3, "invoice from the browser")
    s.key(form, "Return")
    check(s.close() == 0, "tilo did not end cleanly")

    first, reprint, invoice = s.printouts()
    check(pdf_text(reprint) == pdf_text(first),
          "the reprint differs:\n%s\n---\n%s" % (pdf_text(first), pdf_text(reprint)))
    check("Receipt: 1" in pdf_text(first), "the receipt is not transaction 1's")
    code = barcode(reprint, os.path.join(s.tmp, "reprint"))
    check(code == "0001", "the reprint's barcode reads %r" % code)

    subtotal, total = struct.unpack_from("<f", sale, 40)[0], struct.unpack_from("<f", sale, 56)[0]
    text = pdf_text(invoice)
    for part in ("INVOICE", "Invoice Number: 1", "Associate: Administrator", "DESCRIPTION",
                 "ITEM NO", "1001", "Not Applicable", "Authorized", "Received"):
        check(part in text, "the invoice lacks %r:\n%s" % (part, text))
    check(re.search(r"SUBTOTAL: \S*%.2f" % subtotal, text), "no net subtotal:\n" + text)
    check(re.search(r"TOTAL: \S*%.2f" % total, text), "no total of %.2f:\n%s" % (total, text))
    check("CUSTOMER NO:" not in text, "a customer block without a customer")
    png = os.path.join(s.tmp, "invoice")
    code = barcode(invoice, png)
    check(code == "0001", "the invoice's barcode reads %r" % code)
    folder = os.environ.get("TILO_SCREENSHOTS")
    if folder:
        shutil.copy(png + ".png", os.path.join(folder, "invoice.png"))

if __name__ == "__main__":
    harness.main(test)
