"""Barcode labels in the real program: on a demo shop "Barcode print" is
chosen from the Utilities menu, the range of items typed into the box, and the
sheet goes to the built-in PDF printer. The page, rendered at 300 dpi, scans as
exactly the items in the range; its words are read back too. The rendered top
of the sheet is kept when TILO_SCREENSHOTS names a folder."""

import glob
import os
import subprocess
import time

import harness
from harness import check

ITEMS = ["1001", "1002", "1003", "1101", "1102", "1103"]


def test(new_session):
    s = new_session()
    s.start()
    s.log_on()
    wid = s.find_window("TILO Retail    Assoc: 1, .*")
    time.sleep(1.0)

    # Utilities > Barcode print, the ninth entry.
    s.key(wid, "alt+u")
    time.sleep(0.5)
    for _ in range(8):
        s.xdotool("key", "Down")
    s.xdotool("key", "Return")
    box = s.find_window("Barcode print")
    time.sleep(0.5)
    s.key(box, "ctrl+a")
    s.type(box, "1001")
    s.key(box, "Tab", "ctrl+a")
    s.type(box, "1103")
    s.key(box, "Return")
    s.answer("Print")

    for _ in range(100):
        pdfs = glob.glob(os.path.join(s.shop, "printouts", "*.pdf"))
        if pdfs:
            break
        time.sleep(0.2)
    check(len(pdfs) == 1, "no label printout")
    time.sleep(0.5)
    stem = os.path.join(s.tmp, "labels")
    subprocess.run(["pdftoppm", "-r", "300", "-png", "-singlefile", pdfs[0], stem], check=True)
    codes = subprocess.run(["zbarimg", "--quiet", "--raw", stem + ".png"], capture_output=True,
                           text=True).stdout.split()
    check(sorted(codes) == ITEMS, "the labels scan as %s" % codes)
    text = subprocess.run(["pdftotext", "-layout", pdfs[0], "-"], capture_output=True,
                          text=True, check=True).stdout
    words = " ".join(text.split())
    check("1001 LONDON DRY GIN 70CL" in words and "1103 STOUT 440ML" in words,
          "the label words:\n" + text)

    folder = os.environ.get("TILO_SCREENSHOTS")
    if folder:
        os.makedirs(folder, exist_ok=True)
        subprocess.run(["pdftoppm", "-r", "100", "-png", "-singlefile", "-x", "0", "-y", "0",
                        "-W", "827", "-H", "560", pdfs[0], os.path.join(folder, "labels")],
                       check=True)
    check(s.close() == 0, "tilo did not end cleanly")


if __name__ == "__main__":
    harness.main(test)
