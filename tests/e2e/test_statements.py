"""Statements and debtor letters in the real program. A demo shop gets a
customer who owes 25.50 and, a few days back in the history, a sale on account
and a payment: "Customer statement" from the Customers menu shows both and the
balance and prints them to a PDF; Ctrl+L prints debtor letter 1 to a PDF; a
customer in credit gets "No amount is outstanding" and no letter, but his
details print."""

import datetime
import os
import re
import struct
import subprocess
import time

import harness
from harness import check, member_record, pdf_text, put, put_text, wait_for

SALE = 950


def customer(number, name, balance):
    return member_record(number, name, road="12 MILL LANE", town="BURY", balance=balance)


def sale(number, customer_number, payment_type, total):
    r = bytearray(SALE)
    put(r, 0, "q", number)
    put(r, 16, "q", customer_number)
    put(r, 56, "f", total)
    put_text(r, 354, 40, payment_type)
    return bytes(r)


def test(new_session):
    s = new_session()
    # The first run sets the history to start today: run it, then move the start.
    s.start()
    s.find_window("USER LOGON")
    check(s.close() == 0, "tilo did not end cleanly after its first run")
    cfg = bytearray(s.file("wr.cfg"))
    put(cfg, 952, "q", 0)  # print_confirm: the statement goes straight to the printer
    day = datetime.date.today() - datetime.timedelta(days=3)
    for offset, value in ((40126, 1), (40130, 1), (40134, day.year - 1)):
        put(cfg, offset, "i", value)  # the history starts a year back
    with open(os.path.join(s.shop, "wr.cfg"), "wb") as f:
        f.write(bytes(cfg))
    with open(os.path.join(s.shop, "member.dat"), "wb") as f:
        f.write(customer(7, "HARRIS", 25.5) + customer(8, "PATEL", -3.0))
    # The day's folders as the till leaves them: each with its base.dat.
    year = os.path.join(s.shop, str(day.year))
    folder = os.path.join(year, str(day.month), str(day.day))
    os.makedirs(folder, exist_ok=True)
    stamp = day.strftime("09:00%d/%m/%Y").encode()
    for path, data in ((year, bytes(4) + struct.pack("<3i", 900, day.day, day.month)),
                       (os.path.dirname(folder), stamp), (folder, stamp)):
        with open(os.path.join(path, "base.dat"), "wb") as f:
            f.write(data)
    with open(os.path.join(folder, "saleslog.dat"), "wb") as f:
        f.write(sale(900, 7, "Credit", 30.0) + sale(901, 8, "Cash", 2.0) +
                sale(902, 7, "Payment (cash)", 4.5))

    s.start()
    wid = s.find_window("TILO Retail")
    s.log_on()
    time.sleep(1.0)

    # Customers > Customer statement, customer 7, then "Print statement".
    s.key(wid, "alt+f", "Right", "Right", "Right", *(["Down"] * 12), "Return")
    prompt = s.find_window("Please enter the customer")
    s.type(prompt, "7")
    s.key(prompt, "Return")
    form = s.find_window("Statement")
    time.sleep(0.5)
    s.key(form, "Tab", "Tab", "space")
    wait_for(lambda: len(s.printouts()) == 1, "statement PDF")
    s.key(form, "Escape")

    # Ctrl+L: debtor letter 1 for customer 7, through the printer dialog.
    time.sleep(0.5)
    s.key(wid, "ctrl+l")
    prompt = s.find_window("Please enter the customer")
    s.type(prompt, "7")
    s.key(prompt, "Return")
    s.answer("Print")
    wait_for(lambda: len(s.printouts()) == 2, "letter PDF")

    # A customer in credit gets no letter.
    time.sleep(0.5)
    s.key(wid, "ctrl+l")
    prompt = s.find_window("Please enter the customer")
    s.type(prompt, "8")
    s.key(prompt, "Return")
    s.answer("Problem")
    time.sleep(1.0)
    check(len(s.printouts()) == 2, "a letter printed for a customer in credit")

    # Print > Customer details for customer 8, credit or not.
    s.key(wid, "alt+f", *(["Right"] * 4), *(["Down"] * 6), "Return")
    prompt = s.find_window("Please enter the customer")
    s.type(prompt, "8")
    s.key(prompt, "Return")
    s.answer("Print")
    wait_for(lambda: len(s.printouts()) == 3, "customer details PDF")
    check(s.close() == 0, "tilo did not end cleanly")

    statement, letter, details = s.printouts()
    text = pdf_text(details)
    for part in ("Customer: 8", "PATEL", "Billing", "Balance: -3.00", "Last used:", "Terms:"):
        check(part in text, "the details lack %r:\n%s" % (part, text))
    text = pdf_text(statement)
    for part in ("STATEMENT", "Customer ID: 7", "HARRIS", "12 MILL LANE", "Terms:",
                 "Credit sale:", "Transaction: 900, Total: 30.00",
                 "Payment:", "Transaction: 902, 4.50", "Balance: 25.50"):
        check(part in text, "the statement lacks %r:\n%s" % (part, text))
    check("901" not in text, "another customer's sale on the statement:\n" + text)
    info = subprocess.run(["pdfinfo", statement], capture_output=True, text=True).stdout
    check(re.search(r"^Pages:\s+1$", info, re.M), "the statement is not one page:\n" + info)
    text = pdf_text(letter)
    for part in ("HARRIS", "12 MILL LANE", "BURY", "Dear Sir / Madam,",
                 "Customer reference: 7", "now overdue: 25.50", "Yours sincerely,", "Manager"):
        check(part in text, "the letter lacks %r:\n%s" % (part, text))
    check("FINAL NOTICE" not in text, "letter 1 is a final notice")
    shots = os.environ.get("TILO_STATEMENT_PNG")
    if shots:
        for name, pdf in (("statement", statement), ("debtor-letter", letter),
                          ("customer-details", details)):
            subprocess.run(["pdftoppm", "-r", "60", "-png", "-singlefile", pdf,
                            os.path.join(shots, name)], check=True)


if __name__ == "__main__":
    harness.main(test)
