"""Invoices in the real program. A cash sale of two of one item, paid exactly,
prints its standard invoice by itself ("Auto receipt": "Standard invoice");
F11 finds transaction 1 and its "Invoice" button prints it again, the same to
the letter: net amounts, "2 @", the total of the sales log, no customer, and a
barcode that reads as the transaction number."""

import os
import re
import struct
import subprocess
import time

import harness
from harness import barcode, check, pdf_text, put, wait_for

SALE = 950


def test(new_session):
    s = new_session()
    s.edit("wr.cfg", lambda cfg: put(cfg, 40150, "i", 2))  # auto_receipt: "Standard invoice"

    title = "TILO Retail    Assoc: 1, Administrator"
    wid = s.open_till()

    # Transaction 1: two of item 1001, 44.00 paid exactly.
    s.scan(wid, 1001, 1001)
    s.pay_cash(wid, "4400")
    wait_for(lambda: len(s.file(s.today("saleslog.dat"))) == SALE, "sale in the sales log")
    wait_for(lambda: len(s.printouts()) == 1, "invoice of the sale")
    sale = s.file(s.today("saleslog.dat"))
    subtotal, total = struct.unpack_from("<f", sale, 40)[0], struct.unpack_from("<f", sale, 56)[0]

    # F11, transaction 1, "Invoice" (two back from OK), then OK.
    wid = s.find_window(title)
    s.key(wid, "F11")
    s.fill("Display transaction", "1")
    form = s.find_window("Transaction")
    time.sleep(0.5)
    s.key(form, "shift+Tab", "shift+Tab", "space")
    wait_for(lambda: len(s.printouts()) == 2, "invoice from the browser")
    s.key(form, "Return")
    check(s.close() == 0, "tilo did not end cleanly")

    first, invoice = s.printouts()
    text = pdf_text(invoice)
    check(text == pdf_text(first), "the reprint differs:\n%s\n---\n%s" % (pdf_text(first), text))
    for part in ("INVOICE", "Invoice Number: 1", "Associate: Administrator", "DESCRIPTION",
                 "ITEM NO", "1001", "2 @ %.2f" % (subtotal / 2), "Not Applicable",
                 "Authorized", "Received"):
        check(part in text, "the invoice lacks %r:\n%s" % (part, text))
    check(re.search(r"SUBTOTAL: \S*%.2f" % subtotal, text), "no net subtotal:\n" + text)
    check(re.search(r"TOTAL: \S*%.2f" % total, text), "no total of %.2f:\n%s" % (total, text))
    check("CUSTOMER NO:" not in text, "a customer block without a customer")
    png = os.path.join(s.tmp, "invoice")
    code = barcode(invoice, png)
    check(code == "0001", "the invoice's barcode reads %r" % code)
    folder = os.environ.get("TILO_INVOICE_PNG")
    if folder:
        subprocess.run(["cp", png + ".png", folder], check=True)


if __name__ == "__main__":
    harness.main(test)
