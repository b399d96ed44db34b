"""The sale screen in the real program: an item number typed and Enter pressed
shows the line in the basket and on the pole display, F8 opens a drawer on its
own port, at both layouts. The drawer and the display are socat pty pairs.
With TILO_SCREENSHOTS set, the screenshots of both layouts are kept there."""

import os
import subprocess
import time

import harness
from harness import check, put_text


def set_up_devices(s):
    """The pole and drawer on pty pairs, the pole greeting with WELCOME."""
    return s.with_pole_and_drawer(
        lambda cfg: put_text(cfg, 33314, 32, "WELCOME"))  # pole_passive_text


def darkness(png, box):
    """How much ink a region of a screenshot holds: 0 white, 1 black."""
    x, y, w, h = box
    out = subprocess.run(["convert", png, "-crop", "%dx%d+%d+%d" % (w, h, x, y),
                          "-colorspace", "Gray", "-format", "%[fx:1-mean]", "info:"],
                         capture_output=True, text=True, check=True)
    return float(out.stdout)


def sell_at(new_session, screen, name, list_box):
    s = new_session(screen=screen)
    pole, drawer = set_up_devices(s)
    try:
        wid = s.open_till()
        x, y, w, h = s.geometry(wid)
        # The greeting at the start of the sale screen.
        check(pole.received() == b"\x1b\x40WELCOME", "no greeting on the pole")
        time.sleep(1.0)
        before = os.path.join(s.tmp, "before.png")
        s.screenshot(before)
        s.scan(wid, 1001)
        check(pole.received() == b"\x1b\x40LONDON DRY G  22.00", "the pole did not show the item")
        s.scan(wid, 2401)
        check(pole.received() == b"\x1b\x40CRISPS READY  0.84", "the pole did not show the second item")
        s.key(wid, "F8")
        check(drawer.received() == b"\x07\x07", "F8 did not open the drawer")
        time.sleep(0.5)
        after = os.path.join(s.tmp, "after.png")
        s.screenshot(after)
        region = (x + list_box[0], y + list_box[1], list_box[2], list_box[3])
        check(darkness(after, region) > darkness(before, region) + 0.02,
              "no basket rows appeared in the list")
        s.keep(wid, name, after)
        check(s.close() == 0, "tilo did not end cleanly")
    finally:
        pole.close()
        drawer.close()


def test(new_session):
    # The basket list's first rows, counted from the window's top left corner.
    sell_at(new_session, (1280, 1024), "sale-screen.png", (630, 120, 380, 60))
    sell_at(new_session, (900, 600), "sale-screen-small.png", (538, 120, 250, 60))


if __name__ == "__main__":
    harness.main(test)
