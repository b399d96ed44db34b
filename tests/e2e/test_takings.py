"""The takings history in the real program: a year of takings seeded into
wr.cfg, the takings list and the weekly chart opened from the Reports menu, the
chart printed to a one-page PDF, and yesterday amended from the Utilities menu,
which saves wr.cfg at once and logs the change in bun4.dat. The chart is
photographed (kept when TILO_SCREENSHOTS names a folder)."""

import datetime
import struct
import time

import harness
from harness import check, pdf_text, put, wait_for

TAKINGS = 7946  # takings_history[0] in wr.cfg


def slot(s, k):
    return struct.unpack_from("<d", s.file("wr.cfg"), TAKINGS + 8 * k)[0]


def reports_entry(s, wid, up):
    """The entry `up` places from the bottom of the Reports menu."""
    s.key(wid, "alt+r", *(["Up"] * up), "Return")


def takings(day):
    """The seeded takings of a day."""
    if day.month == 8 and day.day <= 14:
        return 0
    return 300 + 40 * day.weekday() + (250 if day.month == 12 else 0)


def test(new_session):
    s = new_session()
    # A shop that trades more at weekends and in December, shut for two weeks in
    # the summer.
    today = datetime.date.today()

    def seed(cfg):
        for k in range(1, 372):
            put(cfg, TAKINGS + 8 * k, "d", takings(today - datetime.timedelta(days=k)))
    s.edit("wr.cfg", seed)
    wid = s.open_till()

    # Reports > Takings: the date prompt offers 14 days ago; the list follows.
    reports_entry(s, wid, 7)
    s.answer("Takings list")
    listing = s.find_window("Takings list")
    time.sleep(0.5)
    s.key(listing, "Escape")

    # Reports > Takings graph, photographed, then printed.
    reports_entry(s, wid, 6)
    graph = s.find_window("Weekly takings average")
    time.sleep(1.0)
    s.keep(graph, "takings-graph.png")
    s.key(graph, "Tab", "space")  # from OK to Print
    s.answer("Print")
    wait_for(lambda: len(s.printouts()) == 1, "chart printout")
    text = pdf_text(s.printouts()[0])
    check(text.count("\f") == 1, "the chart printed on more than one page")
    check("Weekly takings average" in text and "Dec" in text, "the chart printout:\n" + text)
    s.key(graph, "Escape")

    # Utilities > Takings amendment: yesterday becomes 123.45.
    y = today - datetime.timedelta(days=1)
    s.key(wid, "alt+u", "t")
    prompt = s.find_window("Takings amendment")
    time.sleep(0.3)
    s.key(prompt, "ctrl+a")
    s.type(prompt, y.strftime("%d-%m-%Y"))
    s.key(prompt, "Return")
    time.sleep(1.0)
    prompt = s.find_window("Takings amendment")
    s.key(prompt, "ctrl+a")
    s.type(prompt, "123.45")
    s.key(prompt, "Return")
    wait_for(lambda: slot(s, 1) == 123.45, "amended yesterday in wr.cfg")
    check(slot(s, 2) == takings(today - datetime.timedelta(days=2)),
          "the day before yesterday changed")
    log = s.file("bun4.dat").decode("cp1252")
    entry = "  Takings amendment\r\nfor %d/%d/%d: 123.45\r\n" % (y.day, y.month, y.year)
    check(entry in log, "no amendment in the activity log:\n" + log[-300:])
    check(s.close() == 0, "tilo did not end cleanly")
    check(slot(s, 1) == 123.45, "the close-down lost the amendment")


if __name__ == "__main__":
    harness.main(test)
