"""Customers in the real program: a new customer added through the lists of
possible doubles and "Store record?", amended (with its before and after entry
in the activity log), and an old non-taxable customer pruned. The bytes of
member.dat, bun4.dat and wr.cfg are checked after a clean close. Finding a
customer by telephone belongs to the finds run."""

import os
import subprocess
import sys
import time

import harness
from harness import check, member_record, put, read_at, text_at

SIZE = 2094


def member(number, name, road, tax, last_used, telephone):
    return member_record(number, name, road=road, tax=tax, last_used=last_used,
                         telephone=telephone, terms=0)


def test(new_session):
    s = new_session()
    deleted = bytearray(SIZE)
    put(deleted, 0, "q", -1)
    with open(os.path.join(s.shop, "member.dat"), "wb") as f:
        f.write(bytes(deleted) + member(1, "SMITH", "HIGH STREET", 1, "10:0005/01/2020", "0113 496 0001")
                + member(2, "OLDIE", "LOW LANE", 0, "10:0005/01/2020", "0113 496 0002"))
    shots = sys.argv[3] if len(sys.argv) > 3 else None

    s.start()
    s.find_window("TILO Retail")
    s.log_on()
    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")

    # Add: the card offers number 3, the first free after 1 and 2.
    s.key(wid, "ctrl+a")
    card = s.find_window("NEW CUSTOMER")
    time.sleep(0.5)
    s.type(card, "smith")
    s.key(card, "Tab")
    s.type(card, "high st")
    if shots:  # a third argument: the folder for a picture of the card
        subprocess.run(["import", "-window", card, os.path.join(shots, "customer-card.png")],
                       env=s._env(), check=True)
    s.key(card, "Return")
    s.answer("New customer search: name")
    s.answer("New customer search: address")
    s.answer("New customer")

    # Amend customer 3: the prompt, then the card in the amend layout.
    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")
    s.key(wid, "ctrl+b")
    prompt = s.find_window("Amend customer")
    time.sleep(0.3)
    s.type(prompt, "3")
    s.key(prompt, "Return")
    time.sleep(1.0)
    card = s.find_window("Amend customer")
    time.sleep(0.5)
    s.key(card, "ctrl+a")
    s.type(card, "brown")
    s.key(card, "Return")
    time.sleep(1.0)

    # Prune: start number 1, omit those that owe money, and yes to the one offered.
    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")
    s.key(wid, "alt+c", "p")
    s.answer("Prune members")          # the start number, "1" offered
    s.answer("Prune members")          # "Omit those that owe money?": Yes
    s.answer("2 Name: OLDIE")          # Yes: delete
    time.sleep(1.0)
    check(s.close() == 0, "tilo did not end cleanly")

    data = s.file("member.dat")
    check(len(data) == 3 * SIZE, "member.dat grew: %d bytes" % len(data))
    check(read_at(data, 0, "q") == 3, "the new customer did not take the deleted slot")
    check(text_at(data, 8, 30) == "BROWN", "the amended name is %r" % text_at(data, 8, 30))
    # What a new card stores field by field is the customer logic's test.
    check(text_at(data, 38, 30) == "HIGH ST", "the road is %r" % text_at(data, 38, 30))
    check(read_at(data, SIZE, "q") == 1, "customer 1 changed")
    check(read_at(data, 2 * SIZE, "q") == -1, "the pruned customer is still there")
    check(text_at(data, 2 * SIZE + 38, 30) == "LOW LANE", "the pruned record lost its road")

    log = s.file("bun4.dat").decode("cp1252")
    check("  Customer 3 amended:\r\nBefore: SMITH\r\nHIGH ST, \r\n, \r\nTel: , Category: 1"
          "\r\nComment: \r\n\r\nAfter: BROWN\r\n" in log, "no amend entry in the log:\n" + log)
    check(" Customer 2, OLDIE deleted.\r\n" in log, "no prune entry in the log")
    cfg = s.file("wr.cfg")
    check(read_at(cfg, 960, "q") == 1, "new_customers_today is not 1")


if __name__ == "__main__":
    harness.main(test)
