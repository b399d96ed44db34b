"""Reports and labels in the real program, printed on the built-in PDF printer
and read back with pdftotext. The reorder list shows the demo item held at its
reorder level; the inventory listing from number 1 prints its column heading
and the demo items; a sheet of barcode labels for a range, rendered at 300 dpi,
scans as exactly the items in the range. After a cash sale the sales report of today shows it (its printout
carries the sale's total); a report from the first of January is held at a day
whose log is a pipe, its progress box is cancelled and no report appears; then
the same report runs to its end. With TILO_SCREENSHOTS set, the inventory list,
the top of the label sheet, the report window and the progress box are kept
there."""

import datetime
import os
import subprocess
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


def new_printout(s, count):
    """The text of the printout that makes `count`."""
    wait_for(lambda: len(s.printouts()) == count, "printout %d" % count)
    time.sleep(1.0)
    return pdf_text(s.printouts()[-1])


def stock_lists(s, wid):
    # Reports > Reorder list: ten entries down from the first.
    s.key(wid, "alt+r", *(["Down"] * 10), "Return")
    form = s.find_window("Inventory reorder list")
    time.sleep(0.5)
    s.key(form, "Tab", "space")  # from the list to "Print"
    s.answer("Print")
    text = new_printout(s, 1)
    check("Reorder list:" in text and "Page: 1" in text, "no heading:\n" + text)
    check("Item, Restock level, In stock, On order, Order quantity, Order code" in text,
          "no second heading line:\n" + text)
    check("1802, NATURE DOCUMENTARY DVD, 5,5,0,12," in text,
          "the item at its reorder level is missing:\n" + text)
    check("1001, LONDON DRY GIN" not in text, "an item above its level is listed")
    s.key(form, "Escape")
    time.sleep(0.5)

    # Inventory > List from number (Ctrl+I): the screen list from 1801.
    s.key(wid, "ctrl+i")
    s.fill("List from number", "1801")
    listing = s.find_window("Inventory list")
    time.sleep(0.5)
    s.keep(listing, "inventory-list.png")
    s.key(listing, "Escape")
    time.sleep(0.5)

    # Print > From number ..: the range box, then the printer.
    s.key(wid, "alt+n", "f")
    s.answer("Print")  # "From" 1, "To" the highest number
    s.answer("Print")  # the printer dialog
    text = new_printout(s, 2)
    check("Inventory list:" in text, "no listing header:\n" + text)
    words = " ".join(text.split())
    check("Number Description Cat Held Retail Total retail" in words,
          "no column heading:\n" + text)
    check("1001 LONDON DRY GIN 70CL ALC 12 18.33 219.96" in words,
          "the first item's row is wrong:\n" + text)


def labels(s, wid):
    # Utilities > Barcode print, the ninth entry: the range, then the printer.
    s.key(wid, "alt+u", *(["Down"] * 8), "Return")
    box = s.find_window("Barcode print")
    time.sleep(0.5)
    s.key(box, "ctrl+a")
    s.type(box, "1001")
    s.key(box, "Tab", "ctrl+a")
    s.type(box, "1103")
    s.key(box, "Return")
    s.answer("Print")
    words = " ".join(new_printout(s, 3).split())
    check("1001 LONDON DRY GIN 70CL" in words and "1103 STOUT 440ML" in words,
          "the label words:\n" + words)
    sheet = s.printouts()[-1]
    codes = barcodes(sheet, os.path.join(s.tmp, "labels"))
    check(codes == ["1001", "1002", "1003", "1101", "1102", "1103"], "the labels scan as %s" % codes)
    folder = os.environ.get("TILO_SCREENSHOTS")
    if folder:
        os.makedirs(folder, exist_ok=True)
        subprocess.run(["pdftoppm", "-r", "100", "-png", "-singlefile", "-x", "0", "-y", "0",
                        "-W", "827", "-H", "560", sheet, os.path.join(folder, "labels")],
                       check=True)


def barcodes(pdf, stem):
    """Every barcode on the first page of `pdf`, sorted."""
    subprocess.run(["pdftoppm", "-r", "300", "-png", "-singlefile", pdf, stem], check=True)
    return sorted(subprocess.run(["zbarimg", "--quiet", "--raw", stem + ".png"],
                                 capture_output=True, text=True).stdout.split())


def reports(new_session):
    s = new_session()
    today = datetime.date.today()
    try:
        wid = s.open_till()
        stock_lists(s, wid)
        labels(s, wid)
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
        text = new_printout(s, 4)
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
