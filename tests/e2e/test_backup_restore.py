"""Backup and restore in the real program: on a demo shop an item is sold, the
six files are backed up from the Utilities menu into a folder typed at the
prompt, a second sale follows, and Restore brings the backup back and closes
the program by itself. After a restart the item's stock is as at the backup,
the sales of the day are gone with the history, and numbering starts at 1."""

import datetime
import os
import time

import harness
from harness import check, read_at

SIX = ["wr.cfg", "film.dat", "member.dat", "mans.dat", "resn.dat", "bun4.dat"]


def utilities(s, wid, letter):
    s.key(wid, "alt+u")
    time.sleep(0.5)
    s.xdotool("key", letter)


def test(new_session):
    s = new_session()
    backup = os.path.join(s.tmp, "backup")
    today = datetime.date.today()
    day = os.path.join(str(today.year), str(today.month), str(today.day))
    wid = s.open_till()
    s.scan(wid, 1001)
    s.pay_cash(wid, "5000")
    film_at_backup = s.file("film.dat")

    s.back_up(wid, backup)
    for name in SIX:
        check(os.path.exists(os.path.join(backup, name)), name + " not backed up")
    check(open(os.path.join(backup, "film.dat"), "rb").read() == film_at_backup,
          "the backup's film.dat is not the shop's")

    s.scan(wid, 1001)
    s.pay_cash(wid, "5000")
    check(s.file("film.dat") != film_at_backup, "the second sale did not change the stock")
    check(s.exists(os.path.join(day, "saleslog.dat")), "no sales log for today")

    utilities(s, wid, "r")
    warning = s.find_window("Restore data from backup")
    time.sleep(0.5)
    s.key(warning, "Return")
    time.sleep(1.0)
    chooser = s.find_window("Restore data from backup")
    s.key(chooser, "ctrl+a")
    s.xdotool("type", "--delay", "30", os.path.join(backup, "wr.cfg"))
    s.xdotool("key", "Return")
    s.answer("Restore complete")
    check(s.ended("the restore") == 0, "tilo did not close itself cleanly after the restore")
    check(read_at(s.file("wr.cfg"), 1360, "i") == 1, "the restored numbering is not 1")

    s.open_till()
    check(s.close() == 0, "the restart did not end cleanly")
    check(s.file("film.dat") == film_at_backup, "the stock is not as at the backup")
    check(not s.exists(os.path.join(day, "saleslog.dat")), "the day's sales survived the restore")
    check(s.exists(os.path.join(day, "base.dat")), "today's history was not made anew")
    check(read_at(s.file("wr.cfg"), 1360, "i") == 1, "the numbering after the restart is not 1")


if __name__ == "__main__":
    harness.main(test)
