"""The sales report in the real program: after a cash sale the report of today
shows it (its printout, on the built-in PDF printer, carries the sale's total);
a report from the first of January is held at a day whose log is a pipe, its
progress box is cancelled and no report appears; then the same report runs to
its end. With TILO_SCREENSHOTS set, the report window and the progress box are
kept there."""

import datetime
import os
import threading
import time

import harness
from harness import check, pdf_text, read_at, wait_for


def gone(s, pattern, wait):
    deadline = time.time() + wait
    while time.time() < deadline:
        if s.xdotool("search", "--onlyvisible", "--name", pattern, check_rc=False):
            return False
        time.sleep(0.2)
    return True


def open_sales_report(s, wid, from_new_year):
    s.key(wid, "alt+r", "s")
    form = s.find_window("Please specify the period")
    time.sleep(0.5)
    if from_new_year:
        # The start's day and month lists are the first two; Home picks 1.
        s.key(form, "Home", "Tab", "Home")
    s.key(form, "Return")


def reports(new_session):
    s = new_session()
    today = datetime.date.today()
    try:
        wid = s.open_till()
        s.scan(wid, 1001)
        s.pay_cash(wid, "5000")
        time.sleep(0.5)
        sales = s.file(s.today("saleslog.dat"))
        check(len(sales) == 950, "the sale was not logged")
        total = "%.2f" % read_at(sales, 56, "f")

        # Today's report, printed to the PDF printer.
        open_sales_report(s, wid, False)
        report = s.find_window("Sales report: .*")
        time.sleep(1.0)
        s.keep(report, "sales-report.png")
        s.key(report, "alt+p")
        s.answer("Print")
        wait_for(lambda: s.printouts(), "PDF of the report", 10)
        time.sleep(1.0)
        text = pdf_text(s.printouts()[0])
        check("Sales report: " in text and total in text.split("Total")[-1],
              "the printout lacks the sale's total %s:\n%s" % (total, text))
        s.key(report, "Return")
        check(gone(s, "^Sales report: ", 5), "the report window did not close")

        # From the first of January: the walk waits at a day whose log is a pipe.
        held = "%d/1/2" % today.year
        os.makedirs(os.path.join(s.shop, held), exist_ok=True)
        pipe = os.path.join(s.shop, held, "saleslog.dat")
        os.mkfifo(pipe)
        open_sales_report(s, wid, True)
        box = s.find_window("Sales report")
        time.sleep(0.5)
        s.keep(box, "sales-report-progress.png")
        # The screen still paints: the main window answers while the walk waits.
        s.geometry(wid)
        s.answer("Sales report", "Escape")
        # Let the walk past the pipe: it stops at the next day and shows nothing.
        threading.Thread(target=lambda: open(pipe, "wb").close(), daemon=True).start()
        check(gone(s, "^Sales report: ", 3), "a cancelled report still opened")

        # The same report again, run to its end.
        os.remove(pipe)
        open(pipe, "wb").close()
        open_sales_report(s, wid, True)
        report = s.find_window("Sales report: .*")
        s.key(report, "Return")
        check(s.close() == 0, "tilo did not close cleanly")
    finally:
        if s.app is not None:
            s.app.kill()


if __name__ == "__main__":
    harness.main(reports)
