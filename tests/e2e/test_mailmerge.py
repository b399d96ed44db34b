"""Mailmerge in the real program: the store's heading set in "Store print
heading", then letters for customers 2 to 3 of three, with a text typed in the
form, printed on the built-in PDF printer, one PDF a letter; the text of each is
read back with pdftotext, and ADDRESS.VT holds the new name."""

import glob
import os
import subprocess
import sys
import time

import harness
from harness import check, member_record, pdf_text



def member(number, name, road, balance):
    return member_record(number, name, road=road, town="LEEDS", title="MRS", initials="J",
                         balance=balance)


def test(new_session):
    s = new_session()
    with open(os.path.join(s.shop, "member.dat"), "wb") as f:
        f.write(member(1, "ADAMS", "1 HIGH ST", 0.0) + member(2, "BROWN", "2 HIGH ST", 5.0)
                + member(3, "CLARK", "3 LOW RD", 0.0))
    s.start()
    s.find_window("TILO Retail")
    s.log_on()
    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")
    time.sleep(0.5)

    # Store print heading: Utilities, six entries below "Configuration".
    s.key(wid, "alt+u", *(["Down"] * 6), "Return")
    heading = s.find_window("Print heading")
    time.sleep(0.5)
    s.key(heading, "ctrl+a")
    s.type(heading, "Bloggs and Daughters")
    s.key(heading, "Return")
    time.sleep(0.5)

    # Mailmerge: Utilities, seven entries below "Configuration".
    s.key(wid, "alt+u", *(["Down"] * 7), "Return")
    form = s.find_window("Mailmerge")
    time.sleep(0.5)
    s.key(form, "ctrl+a")
    s.type(form, "2")
    s.key(form, "Tab", "Tab")
    s.type(form, "Our summer sale starts on Monday.")
    s.key(form, "Return")
    s.type(form, "Do come in.")
    s.key(form, "shift+Tab", "Return")
    s.answer("Print")

    deadline = time.time() + 20
    pdfs = []
    while len(pdfs) < 2 and time.time() < deadline:
        time.sleep(0.3)
        pdfs = sorted(glob.glob(os.path.join(s.shop, "printouts", "*.pdf")))
    time.sleep(1.0)
    check(len(pdfs) == 2, "expected two letters, found %s" % pdfs)
    letters = [pdf_text(p) for p in pdfs]
    letters.sort(key=lambda t: "BROWN" not in t)
    for text, name, road in ((letters[0], "BROWN", "2 HIGH ST"), (letters[1], "CLARK", "3 LOW RD")):
        number = "2" if name == "BROWN" else "3"
        for line in ("Bloggs and Daughters", "MRS J " + name, road, "LEEDS", "Dear Sir / Madam,",
                     "Customer number: " + number, "Our summer sale starts on Monday.",
                     "Do come in.", "Yours sincerely,", "Manager"):
            check(line in text, "letter to %s lacks %r:\n%s" % (name, line, text))
    check(not any("ADAMS" in t for t in letters), "customer 1 got a letter")
    if len(sys.argv) > 3:  # a third argument: the folder for a picture of a letter
        subprocess.run(["pdftoppm", "-png", "-r", "50", "-singlefile", pdfs[0],
                        os.path.join(sys.argv[3], "mailmerge-letter")], check=True)
    check(s.close() == 0, "tilo did not end cleanly")
    check(s.file("ADDRESS.VT")[:21] == b"Bloggs and Daughters\0", "ADDRESS.VT lacks the new name")


if __name__ == "__main__":
    harness.main(test)
