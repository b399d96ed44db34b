"""A cash-only day in the real program: clerk 3 logs on with the password every
new shop gives its clerks, sells an item for cash with the till receipt printed
by itself into a PDF, and closes the till out, printed, which logs the clerk off
and brings the log-on form back. The administrator logs on, F12 shows the status
screen (its screenshot kept for the docs), and "Exit - print report + log"
prints the activity summary and today's log and closes the program."""

import os
import re
import shutil
import subprocess
import time

import harness
from harness import barcode, check, pdf_text, put, wait_for

HERE = os.path.dirname(os.path.abspath(__file__))
SCREENSHOT = os.path.join(HERE, "..", "..", "docs", "screenshots", "status-screen.png")
TITLE = "TILO Retail    Assoc: 3, Clerk 3"
ADMIN = "TILO Retail    Assoc: 1, Administrator"
STATUS = "TILO STATUS [A-Za-z]+ [A-Za-z]+ [0-9]+ [0-9]+ "


def test(new_session):
    s = new_session()
    # The summary box prints the till receipt by itself, with its barcode.
    s.edit("wr.cfg", lambda cfg: (put(cfg, 40150, "i", 1),   # auto_receipt: "Till receipt"
                                  put(cfg, 40650, "i", 2)))  # receipt_barcode
    wid = s.open_till(clerk=3)
    check(s.find_window(TITLE) == wid, "clerk 3 is not named")

    # One item, cash: 50.00 typed as 5000 in the cash form, which has the focus.
    s.scan(wid, 1001)
    s.pay_cash(wid, "5000")
    wait_for(lambda: len(s.printouts()) == 1, "till receipt")

    # Reports > Till closeout, the last entry of the menu; then "Print, close
    # and log off" and the printer dialog's OK.
    wid = s.find_window(TITLE)
    s.key(wid, "alt+r", "Up", "Return")
    form = s.find_window("Till closeout")
    time.sleep(0.3)
    s.key(form, "Tab", "Return")
    s.answer("Print")
    wait_for(lambda: len(s.printouts()) == 2, "closeout printout")

    # The administrator takes over: the status screen, then the way out with paper.
    s.log_on(clerk=1)
    wid = s.find_window(ADMIN)
    s.key(wid, "F12")
    status = s.find_window(STATUS)
    time.sleep(0.5)
    shot = os.path.join(s.tmp, "status.png")
    subprocess.run(["import", "-window", status, shot], env=s._env(), check=True)
    if os.environ.get("KEEP_SCREENSHOT"):
        shutil.copy(shot, SCREENSHOT)
    s.answer(STATUS)

    # File > "Exit - print report + log", the entry above "Exit"; the printer
    # dialog comes once for the summary and once for the log.
    wid = s.find_window(ADMIN)
    s.key(wid, "alt+f", "Up", "Up", "Return")
    s.answer("Print")
    s.answer("Print")
    rc = s.ended("printing", 30)
    check(rc == 0, "tilo ended with %s" % rc)

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
    # The close-down still ran after the printing.
    check(log.rstrip().endswith("Clerk: 1, Administrator"), "no close-down entry in the log")

    pdfs = s.printouts()
    check(len(pdfs) == 4, "%d printouts, not 4: %s" % (len(pdfs), pdfs))
    receipt, closeout_page, summary, printed_log = pdfs
    text = pdf_text(receipt)
    for expected in ("Receipt: %s" % number, "3, Clerk 3", "Payment: Cash",
                     "Cash change: %.2f" % (50 - total), "Always happy to help!"):
        check(expected in text, "the receipt lacks %r:\n%s" % (expected, text))
    code = barcode(receipt, os.path.join(s.tmp, "receipt"))
    check(code == number.rjust(4, "0"), "the receipt's barcode reads %r, not %s" % (code, number))
    text = pdf_text(closeout_page)
    for expected in ("Till closeout", "Assoc: 3, Clerk 3", "Initial till: 100.00",
                     "Cash: %.2f" % total, "Till total: %.2f" % (100 + total)):
        check(expected in text, "the closeout printout lacks %r:\n%s" % (expected, text))
    text = pdf_text(summary)
    for expected in ("Today's till takings: %.2f" % total, "Cash sales (1): %.2f" % total,
                     "Today transactions: 1 Items: 1", "Monthly till totals:"):
        check(expected in text, "the summary lacks %r:\n%s" % (expected, text))
    text = pdf_text(printed_log)
    for expected in ("Log file: %s" % time.strftime("%d/%m/%Y"), "Page: 1", "Switched on.",
                     "Log on.", "Sale: %s, Total: %.2f" % (number, total)):
        check(expected in text, "the printed log lacks %r:\n%s" % (expected, text))


if __name__ == "__main__":
    harness.main(test)
