"""The day's status and the way out with paper, in the real program: a cash
sale, then F12 shows the status screen (its screenshot kept for the docs),
then "Exit - print report + log" prints the activity summary and today's log
into two PDFs and closes the program."""

import os
import re
import shutil
import subprocess
import time

import harness
from harness import check, pdf_text

HERE = os.path.dirname(os.path.abspath(__file__))
SCREENSHOT = os.path.join(HERE, "..", "..", "docs", "screenshots", "status-screen.png")


def test(new_session):
    s = new_session()
    wid = s.open_till()
    s.scan(wid, 1001)
    s.pay_cash(wid, "5000")

    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")
    s.key(wid, "F12")
    status = s.find_window("TILO STATUS [A-Za-z]+ [A-Za-z]+ [0-9]+ [0-9]+ ")
    time.sleep(0.5)
    shot = os.path.join(s.tmp, "status.png")
    subprocess.run(["import", "-window", status, shot], env=s._env(), check=True)
    if os.environ.get("KEEP_SCREENSHOT"):
        shutil.copy(shot, SCREENSHOT)
    s.answer("TILO STATUS [A-Za-z]+ [A-Za-z]+ [0-9]+ [0-9]+ ")

    # File > "Exit - print report + log", the entry above "Exit"; the printer
    # dialog comes once for the summary and once for the log.
    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")
    s.key(wid, "alt+f", "Up", "Up", "Return")
    s.answer("Print")
    s.answer("Print")
    rc = s.ended("printing", 30)
    check(rc == 0, "tilo ended with %s" % rc)

    pdfs = s.printouts()
    check(len(pdfs) == 2, "%d printouts, not 2: %s" % (len(pdfs), pdfs))
    log = s.file("bun4.dat").decode("cp1252")
    sale = re.search(r"Sale: (\d+), Total: (\d+\.\d\d)\r\n", log)
    check(sale is not None, "no sale in the activity log")
    total = sale.group(2)
    summary, printed_log = (pdf_text(p) for p in pdfs)
    for expected in ("Today's till takings: %s" % total, "Cash sales (1): %s" % total,
                     "Today transactions: 1 Items: 1", "Monthly till totals:"):
        check(expected in summary, "the summary lacks %r:\n%s" % (expected, summary))
    today = time.strftime("%d/%m/%Y")
    for expected in ("Log file: %s" % today, "Page: 1", "Switched on.", "Log on.",
                     "Sale: %s, Total: %s" % (sale.group(1), total)):
        check(expected in printed_log, "the printed log lacks %r:\n%s" % (expected, printed_log))
    # The close-down still ran after the printing.
    check(log.rstrip().endswith("Clerk: 1, Administrator"), "no close-down entry in the log")


if __name__ == "__main__":
    harness.main(test)
