"""Invoices in the real program. A cash sale of two of one item, paid exactly,
prints its standard invoice by itself ("Auto receipt": "Standard invoice");
F11 finds transaction 1 and its "Invoice" button prints it again, the same to
the letter: net amounts, "2 @", the total of the sales log, no customer, and a
barcode that reads as the transaction number."""

import glob
import os
import re
import struct
import subprocess
import time

import harness
from harness import check, put

SALE = 950


def pdf_text(path):
    return subprocess.run(["pdftotext", "-layout", path, "-"], capture_output=True,
                          text=True, check=True).stdout


def printouts(s):
    return sorted(glob.glob(os.path.join(s.shop, "printouts", "*.pdf")))


def wait_for(condition, what, timeout=15.0):
    deadline = time.time() + timeout
    while time.time() < deadline:
        if condition():
            return
        time.sleep(0.2)
    raise harness.Failure("no %s within %.0f s" % (what, timeout))


def day_file(s, name):
    (path,) = glob.glob(os.path.join(s.shop, "[0-9]*", "[0-9]*", "[0-9]*", name))
    return open(path, "rb").read()


def test(new_session):
    s = new_session()
    cfg = bytearray(s.file("wr.cfg"))
    put(cfg, 40150, "i", 2)  # auto_receipt: "Standard invoice"
    with open(os.path.join(s.shop, "wr.cfg"), "wb") as f:
        f.write(bytes(cfg))

    s.start()
    s.find_window("TILO Retail")
    s.log_on()
    title = "TILO Retail    Assoc: 1, Administrator"
    wid = s.find_window(title)

    # Transaction 1: two of item 1001, 44.00 paid exactly.
    for _ in range(2):
        s.type(wid, "1001")
        s.key(wid, "Return")
        time.sleep(0.3)
    s.key(wid, "F5")
    time.sleep(1.0)
    s.xdotool("type", "--delay", "60", "4400")
    s.xdotool("key", "Return")
    s.answer("Transaction committed, summary")
    wait_for(lambda: len(day_file(s, "saleslog.dat")) == SALE, "sale in the sales log")
    wait_for(lambda: len(printouts(s)) == 1, "invoice of the sale")
    sale = day_file(s, "saleslog.dat")
    subtotal, total = struct.unpack_from("<f", sale, 40)[0], struct.unpack_from("<f", sale, 56)[0]

    # F11, transaction 1, "Invoice" (two back from OK), then OK.
    wid = s.find_window(title)
    s.key(wid, "F11")
    prompt = s.find_window("Display transaction")
    time.sleep(0.3)
    s.type(prompt, "1")
    s.key(prompt, "Return")
    form = s.find_window("Transaction")
    time.sleep(0.5)
    s.key(form, "shift+Tab", "shift+Tab", "space")
    wait_for(lambda: len(printouts(s)) == 2, "invoice from the browser")
    s.key(form, "Return")
    check(s.close() == 0, "tilo did not end cleanly")

    first, invoice = printouts(s)
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
    subprocess.run(["pdftoppm", "-r", "200", "-png", "-singlefile", invoice, png], check=True)
    code = subprocess.run(["zbarimg", "--quiet", "--raw", png + ".png"], capture_output=True,
                          text=True).stdout.strip()
    check(code == "0001", "the invoice's barcode reads %r" % code)
    folder = os.environ.get("TILO_INVOICE_PNG")
    if folder:
        subprocess.run(["cp", png + ".png", folder], check=True)


if __name__ == "__main__":
    harness.main(test)
