"""The finds in the real program, on a demo shop with two customers written in
before the start: "Find that contain" from the Inventory menu offers each item
with the fragment in turn and ends with "Finished"; Ctrl+E finds a customer by
telephone; Enter on the empty item box opens the description search, whose
match goes into the basket and is sold (after the telephone find, which empties
the basket)."""

import os
import time

import harness
from harness import check, member_record, stock_of

def customer(number, name, telephone):
    return member_record(number, name, telephone=telephone)


def boxes_answered(s, title, key, count):
    for _ in range(count):
        s.answer(title, key)


def finds(new_session):
    s = new_session(screen=(1280, 1024))
    with open(os.path.join(s.shop, "member.dat"), "wb") as f:
        f.write(customer(7, "HARRIS", "01632 960555") + customer(8, "PATEL", "0777 100200"))
    before = stock_of(s.file("film.dat"), 1202)
    wid = s.open_till()

    # Inventory > Find that contain: three items hold COFFEE; No to each, then
    # the end of the file.
    s.key(wid, "alt+f", "Right", *(["Down"] * 9), "Return")
    s.fill("Find that contain", "coffee")
    boxes_answered(s, "Search: No to continue", "n", 3)
    s.answer("Finished")

    # Ctrl+E: the telephone find halts on the customer whose number holds 960.
    s.key(wid, "ctrl+e")
    s.fill("Find telephone", "960")
    s.answer("Search: Yes to halt, No to continue", "Return")
    # A number nobody has: straight to the end.
    s.key(wid, "ctrl+e")
    s.fill("Find telephone", "4242")
    s.answer("Finished")

    # Enter on the empty item box: the description search, OK on the match.
    s.key(wid, "Return")
    s.fill("Item description search", "cro")
    s.answer("FIND INVENTORY")
    time.sleep(0.5)

    # The item found is sold: its stock falls by one.
    s.pay_cash(wid, "1000")
    time.sleep(1.0)
    check(s.close() == 0, "tilo did not end cleanly")
    after = stock_of(s.file("film.dat"), 1202)
    check(after == before - 1, "CROSSWORD BOOK stock went from %d to %d" % (before, after))


if __name__ == "__main__":
    harness.main(finds)
