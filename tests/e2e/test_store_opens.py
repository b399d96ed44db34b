"""The store opens and closes: a demo shop made by the installer, the real
program started in it, the main window at the size the screen rule gives, a
second start kept out, and a close-down that writes everything back."""

import datetime
import os
import subprocess

import harness
from harness import check, read_at, text_at


def large_screen(new_session):
    s = new_session(screen=(1280, 1024))
    s.start()
    wid = s.find_window("TILO Retail")
    x, y, w, h = s.geometry(wid)
    check((w, h) == (1024, 746), "window is %dx%d, not 1024x746" % (w, h))

    # A second start finds the first and ends at once, writing nothing.
    before = s.file("bun4.dat")
    second = subprocess.run([s.tilo], cwd=s.shop, env=s._env(), timeout=20)
    check(second.returncode == 0, "second instance returned %d" % second.returncode)
    check(s.file("bun4.dat") == before, "second instance wrote to the activity log")

    today = datetime.date.today()
    check(s.close() == 0, "tilo did not end cleanly")

    cfg = s.file("wr.cfg")
    check(len(cfg) == 42550, "wr.cfg is %d bytes" % len(cfg))
    check(read_at(cfg, 76, "i") == today.day, "last_day is not today")
    check(read_at(cfg, 496, "i") == today.year and read_at(cfg, 492, "i") == today.month,
          "last_used date not written at close")
    check(read_at(cfg, 40146, "i") == today.year, "first run did not set first_year")
    check(text_at(cfg, 1409, 6) in ("VAT 1", "GST 1"), "first run did not name the taxes")
    check(text_at(cfg, 34154, 32) == "27,112,0,25,250", "first run drawer code missing")

    check(len(s.file("ADDRESS.VT")) == 294, "ADDRESS.VT is not 294 bytes")
    check(text_at(s.file("ADDRESS.VT"), 0, 42) == "CORNER STORE", "heading lines lost")
    language = s.file("language.ini")
    check(len(language) == 4640, "language.ini is %d bytes" % len(language))
    check(text_at(language, 80, 80) == "Receipt", "wording not the English defaults")
    check(len(s.file("resn.dat")) == 30 * 12932, "reminder diary not made at first run")

    log = s.file("bun4.dat").decode("cp1252")
    check("Switched on.\r\n" in log, "no 'Switched on.' entry")
    check("Switched off.\r\nClerk: " in log, "no 'Switched off.' entry with the clerk")
    check(log.index("Switched on.") < log.index("Switched off."), "log entries out of order")
    check(s.exists(s.today("thedaily.dat")), "no thedaily.dat for today")

    # A second run reads back what the first saved: no first run again.
    s.start()
    s.find_window("TILO Retail")
    check(s.close() == 0, "second run did not end cleanly")
    log = s.file("bun4.dat").decode("cp1252")
    check(log.count("Switched on.") == 2, "second run not logged")


def small_screen(new_session):
    s = new_session(screen=(900, 600))
    s.start()
    wid = s.find_window("TILO Retail")
    x, y, w, h = s.geometry(wid)
    check((w, h) == (800, 600), "small-screen window is %dx%d" % (w, h))
    check((x, y) == (0, 0), "small-screen window at %d,%d" % (x, y))
    s.close()


def broken_shop(new_session):
    """A film.dat one byte short: the program says so and writes nothing."""
    s = new_session()
    with open(os.path.join(s.shop, "film.dat"), "r+b") as f:
        f.truncate(1874 * 49 - 1)
    before = {n: s.file(n) for n in os.listdir(s.shop)}
    s.start()
    s.answer("Fatal error")
    rc = s.ended("a failed start")
    check(rc == 0, "failed start returned %s" % rc)
    after = {n: s.file(n) for n in os.listdir(s.shop)}
    check(before == after, "a failed start changed the shop's files")


def test(new_session):
    large_screen(new_session)
    small_screen(new_session)
    broken_shop(new_session)


if __name__ == "__main__":
    harness.main(test)
