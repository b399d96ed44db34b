"""A cash-only day in the real program: clerk 3 logs on with the password every
new shop gives its clerks, sells an item for cash with the till receipt printed
by itself into a PDF, and closes the till out, printed, which logs the clerk
off and brings the log-on form back."""

import glob
import os
import re
import subprocess
import time

import harness
from harness import check, put


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


def test(new_session):
    s = new_session()
    # The summary box prints the till receipt by itself, with its barcode.
    cfg = bytearray(s.file("wr.cfg"))
    put(cfg, 40150, "i", 1)  # auto_receipt: "Till receipt"
    put(cfg, 40650, "i", 2)  # receipt_barcode
    with open(os.path.join(s.shop, "wr.cfg"), "wb") as f:
        f.write(bytes(cfg))

    s.start()
    s.find_window("TILO Retail")
    s.log_on(clerk=3, password="7351")
    wid = s.find_window("TILO Retail    Assoc: 3, Clerk 3")

    # One item, cash: 50.00 typed as 5000 in the cash form, which has the focus.
    s.type(wid, "1001")
    s.key(wid, "Return")
    s.key(wid, "F5")
    time.sleep(1.0)
    s.xdotool("type", "--delay", "60", "5000")
    s.xdotool("key", "Return")
    s.answer("Transaction committed, summary")
    wait_for(lambda: len(printouts(s)) == 1, "till receipt")

    # Reports > Till closeout, the last entry of the menu; then "Print, close
    # and log off" and the printer dialog's OK.
    wid = s.find_window("TILO Retail    Assoc: 3, Clerk 3")
    s.key(wid, "alt+r", "Up", "Return")
    form = s.find_window("Till closeout")
    time.sleep(0.3)
    s.key(form, "Tab", "Return")
    s.answer("Print")
    s.find_window("USER LOGON")
    s.find_window("TILO Retail")
    wait_for(lambda: len(printouts(s)) == 2, "closeout printout")
    check(s.close() == 0, "tilo did not end cleanly")

    log = s.file("bun4.dat").decode("cp1252")
    logon = log.find("Log on.\r\nClerk: 3, Clerk 3\r\n")
    sale = re.search(r"Sale: (\d+), Total: (\d+\.\d\d)\r\n", log)
    closeout = log.find("\r\nTill closeout: ")
    check(logon >= 0, "no log-on of clerk 3 in the activity log")
    check(sale is not None, "no sale in the activity log")
    check(closeout >= 0, "no till closeout in the activity log")
    check(logon < sale.start() < closeout, "log entries out of order")
    number, total = sale.group(1), float(sale.group(2))
    entry = log[closeout:]
    check("Assoc: 3, Clerk 3\r\n" in entry, "the closeout does not name the clerk")
    check("Cash: %.2f\r\n" % total in entry, "the closeout's cash is not the sale's total")
    check("Total cash: %.2f\r\n" % (100 + total) in entry, "the closeout's cash total is wrong")
    check("Till total: %.2f\r\n" % (100 + total) in entry, "the closeout's till total is wrong")
    check(log.rstrip().endswith("Clerk: 3, Clerk 3"), "the close-down does not name clerk 3")

    receipt, closeout_page = printouts(s)
    text = pdf_text(receipt)
    for expected in ("Receipt: %s" % number, "3, Clerk 3", "Payment: Cash",
                     "Cash change: %.2f" % (50 - total), "Always happy to help!"):
        check(expected in text, "the receipt lacks %r:\n%s" % (expected, text))
    png = os.path.join(s.tmp, "receipt")
    subprocess.run(["pdftoppm", "-r", "200", "-png", "-singlefile", receipt, png], check=True)
    code = subprocess.run(["zbarimg", "--quiet", "--raw", png + ".png"], capture_output=True,
                          text=True).stdout.strip()
    check(code == number.rjust(4, "0"), "the receipt's barcode reads %r, not %s" % (code, number))
    text = pdf_text(closeout_page)
    for expected in ("Till closeout", "Assoc: 3, Clerk 3", "Initial till: 100.00",
                     "Cash: %.2f" % total, "Till total: %.2f" % (100 + total)):
        check(expected in text, "the closeout printout lacks %r:\n%s" % (expected, text))


if __name__ == "__main__":
    harness.main(test)
