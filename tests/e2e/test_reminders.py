"""The reminder diary in the real program: two reminders added for today with
Ctrl+R; the next start opens with the "Reminders" box ("For today: 2"), one is
deleted from the menu, and the start after that still opens with it ("For
today: 1", kept as a screenshot when TILO_SCREENSHOTS names a folder). The
bytes of today's page of resn.dat are checked after each clean close."""

import os
import time

import harness
from harness import check, read_at, text_at

PAGE = 12932


def today(s):
    page = s.file("resn.dat")[:PAGE]
    count = read_at(page, 804, "i")
    rows = [(text_at(page, 812 + 30 * i, 30), text_at(page, 6872 + 30 * i, 30))
            for i in range(count)]
    return count, rows


def add(s, wid, customer, item):
    s.key(wid, "ctrl+r")
    form = s.find_window("Add reminder")
    time.sleep(0.5)
    s.type(form, customer)
    s.key(form, "Tab")
    s.type(form, item)
    s.key(form, "Return")
    time.sleep(0.5)


def test(new_session):
    s = new_session()
    s.start()
    s.find_window("TILO Retail")
    s.log_on()
    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")
    add(s, wid, "mrs jones", "blue teapot")
    add(s, wid, "mr patel", "road atlas")
    check(s.close() == 0, "first run did not close cleanly")
    count, rows = today(s)
    check(count == 2, "two reminders for today, got %d" % count)
    check(rows == [("MRS JONES", "BLUE TEAPOT"), ("MR PATEL", "ROAD ATLAS")], rows)

    s.start()
    s.answer("Reminders")
    s.log_on()
    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")
    s.key(wid, "alt+e")
    s.key(wid, "d")
    days = s.find_window("Select day:")
    time.sleep(0.5)
    s.key(days, "Return")
    entries = s.find_window("Delete reservation")
    time.sleep(0.5)
    s.key(entries, "Return")
    s.answer("Reminders")
    check(s.close() == 0, "second run did not close cleanly")
    count, rows = today(s)
    check(rows == [("MR PATEL", "ROAD ATLAS")], "the first one deleted, the rest packed: %s" % rows)

    s.start()
    s.find_window("Reminders")
    if os.environ.get("TILO_SCREENSHOTS"):
        time.sleep(0.5)
        s.screenshot(os.path.join(os.environ["TILO_SCREENSHOTS"], "reminders-for-today.png"))
    s.answer("Reminders")
    s.log_on()
    s.find_window("TILO Retail    Assoc: 1, Administrator")
    check(s.close() == 0, "third run did not close cleanly")


if __name__ == "__main__":
    harness.main(test)
