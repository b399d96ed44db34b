"""Configuration from the real program: Ctrl+C opens the sheet, a start point is
typed on "General" and an open character on "Till configuration", OK writes
wr.cfg at once with both, and the pole page, never shown, leaves its bytes as
they were."""
import os
import subprocess
import sys
import time

from harness import check, main, read_at

SCREENSHOTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "docs",
                           "screenshots")

# The pole page's fields: the tick to the columns, the texts, the line settings.
POLE = [(40550, 40590), (33314, 33506), (40854, 40870)]


def configuration(new_session):
    s = new_session()
    s.start()
    wid = s.find_window("TILO Retail")
    s.log_on()
    time.sleep(1.0)
    before = s.file("wr.cfg")

    s.key(wid, "ctrl+c")
    sheet = s.find_window("Configuration")
    time.sleep(0.5)
    # The sheet opens on "General" with the inventory start point to type in.
    s.key(sheet, "ctrl+a")
    s.type(sheet, "5001")
    time.sleep(0.3)
    if "--keep-screenshot" in sys.argv:
        subprocess.run(["import", "-window", sheet,
                        os.path.join(SCREENSHOTS, "configuration-general.png")],
                       env=s._env(), check=True)
    # On to "Till configuration" (Terms and Receipts pass by on the way).
    s.key(sheet, "ctrl+Tab", "ctrl+Tab", "ctrl+Tab")
    time.sleep(0.5)
    s.key(sheet, "ctrl+a")
    s.type(sheet, "27")
    s.key(sheet, "Return")
    time.sleep(1.0)

    after = s.file("wr.cfg")
    check(len(after) == 42550, "wr.cfg is %d bytes" % len(after))
    check(read_at(after, 1000, "q") == 5000,
          "last_inventory_number is %d" % read_at(after, 1000, "q"))
    check(read_at(after, 928, "q") == 27, "drawer_open_char is %d" % read_at(after, 928, "q"))
    for start, end in POLE:
        check(after[start:end] == before[start:end], "pole bytes %d-%d changed" % (start, end))
    check(s.close() == 0, "tilo did not close cleanly")


if __name__ == "__main__":
    main(configuration)
