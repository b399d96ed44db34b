"""Item pictures in the real program: a new shop holds the 24 built-in
pictures; a picture chosen with "Add custom image to item" is copied byte for
byte to m1001.bmp, the item's own_picture becomes 1, and the sale screen shows
it beside the built-in pictures of the other items (kept as a screenshot when
TILO_SCREENSHOTS names a folder)."""

import os
import struct
import time

import harness
from harness import check, read_at

SIZE = 1874


def bmp(width, height):
    """A 24-bit bitmap: a dark frame round a bright target, bottom row first."""
    stride = (width * 3 + 3) & ~3
    rows = []
    for y in range(height):
        row = bytearray()
        for x in range(width):
            d = min(x, y, width - 1 - x, height - 1 - y)
            colour = [(40, 40, 40), (0, 200, 255), (255, 255, 255), (0, 0, 220)][min(d // 6, 3)]
            row += bytes(colour)
        rows.append(bytes(row) + bytes(stride - len(row)))
    pixels = b"".join(rows)
    header = struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 2835, 2835, 0, 0)
    return header + info + pixels


def test(new_session):
    s = new_session()
    for n in range(1, 25):
        check(s.file("STOCK%d.bmp" % n)[:2] == b"BM", "built-in picture %d placed" % n)
    chosen = os.path.join(s.tmp, "shelf photo.bmp")
    with open(chosen, "wb") as f:
        f.write(bmp(64, 64))

    s.start()
    s.find_window("TILO Retail")
    s.log_on()
    wid = s.find_window("TILO Retail    Assoc: 1, Administrator")
    s.key(wid, "alt+f", "Right", "Up", "Return")
    chooser = s.find_window("Add custom image to item")
    time.sleep(0.8)
    s.type(chooser, chosen)
    s.key(chooser, "Return")
    prompt = s.find_window("Picture")
    time.sleep(0.5)
    s.key(prompt, "ctrl+a")
    s.type(prompt, "1001")
    s.key(prompt, "Return")
    time.sleep(0.5)
    s.answer("Picture")
    time.sleep(0.5)
    if os.environ.get("TILO_SCREENSHOTS"):
        # The ALC category, where item 1001 stands beside two built-in pictures.
        x, y, _, _ = s.geometry(wid)
        s.xdotool("mousemove", x + 525, y + 115, "click", "1")
        time.sleep(0.8)
        s.screenshot(os.path.join(os.environ["TILO_SCREENSHOTS"], "sale-screen-pictures.png"))
    check(s.close() == 0, "tilo did not close cleanly")

    check(s.file("m1001.bmp") == open(chosen, "rb").read(), "m1001.bmp is the chosen file")
    film = s.file("film.dat")
    items = {read_at(film, i, "q"): film[i:i + SIZE] for i in range(0, len(film), SIZE)}
    check(read_at(items[1001], 1562, "i") == 1, "own_picture of 1001")
    check(read_at(items[1002], 1562, "i") == 0, "own_picture of 1002 untouched")


if __name__ == "__main__":
    harness.main(test)
