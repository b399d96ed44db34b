"""Stock lists and listings in the real program: the reorder list shows the demo
item held at its reorder level and prints it to the PDF printer; the inventory
listing from number 1 prints its column heading and the demo items. Both PDFs
are read back with pdftotext."""

import glob
import os
import subprocess
import time

import harness
from harness import check


def new_pdf(s, before, wait=15):
    deadline = time.time() + wait
    while time.time() < deadline:
        pdfs = set(glob.glob(os.path.join(s.shop, "printouts", "*.pdf"))) - before
        if pdfs:
            time.sleep(1.0)
            pdf = pdfs.pop()
            return subprocess.run(["pdftotext", "-layout", pdf, "-"], capture_output=True,
                                  text=True).stdout
        time.sleep(0.3)
    raise harness.Failure("no new PDF within %d s" % wait)


def printed(s):
    return set(glob.glob(os.path.join(s.shop, "printouts", "*.pdf")))


def test(new_session):
    s = new_session()
    try:
        s.start()
        wid = s.find_window("TILO Retail")
        s.log_on()
        time.sleep(1.0)

        # Reports > Reorder list: ten entries down from the first.
        s.key(wid, "alt+r", *(["Down"] * 10), "Return")
        form = s.find_window("Inventory reorder list")
        time.sleep(0.5)
        before = printed(s)
        s.key(form, "Tab", "space")  # from the list to "Print"
        s.answer("Print")
        text = new_pdf(s, before)
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
        prompt = s.find_window("List from number")
        time.sleep(0.3)
        s.type(prompt, "1801")
        s.key(prompt, "Return")
        listing = s.find_window("Inventory list")
        time.sleep(0.5)
        if os.environ.get("TILO_SCREENSHOTS"):
            s.screenshot(os.path.join(os.environ["TILO_SCREENSHOTS"], "inventory-list.png"))
        s.key(listing, "Escape")
        time.sleep(0.5)

        # Print > From number ..: the range box, then the printer.
        before = printed(s)
        s.key(wid, "alt+n", "f")
        s.answer("Print")  # "From" 1, "To" the highest number
        s.answer("Print")  # the printer dialog
        text = new_pdf(s, before)
        check("Inventory list:" in text, "no listing header:\n" + text)
        words = " ".join(text.split())
        check("Number Description Cat Held Retail Total retail" in words,
              "no column heading:\n" + text)
        check("1001 LONDON DRY GIN 70CL ALC 12 18.33 219.96" in words,
              "the first item's row is wrong:\n" + text)
        check(s.close() == 0, "tilo did not close cleanly")
    finally:
        if s.app is not None:
            s.app.kill()


if __name__ == "__main__":
    harness.main(test)
