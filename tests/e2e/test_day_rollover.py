"""The first start after a gap: a shop used once, its settings put back to an
earlier day with some trade on it, then the real program started again. The gap
asks "If system date ... is correct select OK", moves the reminder diary and
leaves the missed days empty; Cancel there ends the program with every file as
it was. Every figure of the rollover, and the day after that asks nothing, are
the rollover model's and the in-process start's to check."""

import datetime
import os

import harness
from harness import check, put, read_at

PAGE = 12932
DATE_BOX = "If system date .* is correct select OK"


def takings(k):
    return 7946 + 8 * k


def used_shop(new_session):
    """A demo shop after one ordinary run, so wr.cfg is the program's own."""
    s = new_session()
    s.start()
    s.find_window("TILO Retail")
    check(s.close() == 0, "the first run did not end cleanly")
    return s


def set_last_use(s, last, till_takings=321.5):
    cfg = bytearray(s.file("wr.cfg"))
    put(cfg, 76, "i", last.day)            # last_day
    put(cfg, 488, "i", last.day)           # last_used_day
    put(cfg, 492, "i", last.month)
    put(cfg, 496, "i", last.year)
    put(cfg, 320, "q", 14)                 # today_transactions
    put(cfg, 160, "q", 40)                 # today_items
    put(cfg, 41750, "d", till_takings)
    put(cfg, takings(1), "d", 99.25)
    put(cfg, 42070 + 8 * 4, "d", 12.5)     # category_total_today[4]
    with open(os.path.join(s.shop, "wr.cfg"), "wb") as f:
        f.write(cfg)
    return bytes(cfg)


def write_diary(s, page_with_reminder):
    diary = bytearray(30 * PAGE)
    for p in range(30):
        put(diary, p * PAGE, "i", p)
    base = page_with_reminder * PAGE
    put(diary, base + 4, "i", 2)           # used[0]
    put(diary, base + 804, "i", 1)         # count
    diary[base + 812:base + 812 + 6] = b"SMITH\0"
    diary[base + 6872:base + 6872 + 8] = b"RING UP\0"
    with open(os.path.join(s.shop, "resn.dat"), "wb") as f:
        f.write(diary)


def gap_of_three_days(new_session):
    s = used_shop(new_session)
    today = datetime.date.today()
    set_last_use(s, today - datetime.timedelta(days=3))
    write_diary(s, 3)
    s.start()
    s.answer(DATE_BOX)             # OK
    s.answer("Reminders")          # the reminder three days ahead is today's now
    s.find_window("TILO Retail")
    check(s.close() == 0, "tilo did not end cleanly")
    cfg = s.file("wr.cfg")
    check(read_at(cfg, 76, "i") == today.day, "last_day is not today")
    check(read_at(cfg, takings(1), "d") == 0 and read_at(cfg, takings(2), "d") == 0,
          "the missed days are not empty")
    check(read_at(cfg, takings(3), "d") == 321.5, "slot 3 does not hold the last day's takings")
    check(read_at(cfg, takings(4), "d") == 99.25, "takings_history did not shift by three")
    diary = s.file("resn.dat")
    check(len(diary) == 30 * PAGE, "diary is %d bytes" % len(diary))
    check(read_at(diary, 804, "i") == 1 and diary[812:817] == b"SMITH",
          "page 3 did not become today's page")
    check(all(read_at(diary, p * PAGE, "i") == p for p in range(30)), "pages not renumbered")
    log = s.file("bun4.dat").decode("cp1252")
    check(log.count("Switched on.") == 2, "second start not logged")


def cancel_at_the_date_box(new_session):
    s = used_shop(new_session)
    today = datetime.date.today()
    cfg = set_last_use(s, today - datetime.timedelta(days=2))
    log = s.file("bun4.dat")
    s.start()
    s.answer(DATE_BOX, key="Escape")
    check(s.ended("the cancel") == 0, "a cancelled start did not end with 0")
    check(s.file("wr.cfg") == cfg, "wr.cfg changed after the cancel")
    check(s.file("bun4.dat") == log, "the log changed after the cancel")


def test(new_session):
    gap_of_three_days(new_session)
    cancel_at_the_date_box(new_session)


if __name__ == "__main__":
    harness.main(test)
