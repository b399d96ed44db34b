"""The shop the menu entry opens, and whose eyes its files are for. `tilo --home`
is started as a desktop with umask 000 would start it, in an empty home: it asks
for the demo shop and makes it in ~/TILO. A second run sells an item with the
receipt printed on the PDF printer and backs the shop up into a folder of its
own. Then every folder under ~/TILO is 0700 and every file 0600."""

import os
import shutil
import stat
import tempfile

import harness
from harness import check, find_item, put, put_text


def wrong_modes(top):
    """Every entry under `top` (itself included) that others could read."""
    paths = [top]
    for folder, dirs, files in os.walk(top):
        paths += [os.path.join(folder, name) for name in dirs + files]
    wrong = []
    for path in paths:
        mode = stat.S_IMODE(os.lstat(path).st_mode)
        if mode != (0o700 if os.path.isdir(path) else 0o600):
            wrong.append("%s %o" % (os.path.relpath(path, top), mode))
    return wrong


def test(new_session):
    home = tempfile.mkdtemp(prefix="tilo-home-")
    try:
        run(new_session, home)
    finally:
        shutil.rmtree(home, ignore_errors=True)


def run(new_session, home):
    shop = os.path.join(home, "TILO")
    s = new_session(shop=shop)
    desktop = {"args": ["--home"], "umask": 0, "env": {"HOME": home, "TILO_SHOP": ""}}

    # The first launch finds no shop and asks; y takes the demo shop.
    s.start(**desktop)
    s.answer("Shop folder", key="y")
    s.find_window("TILO Retail")
    check(s.close() == 0, "the first run did not end cleanly")
    find_item(s.file("film.dat"), 1001)

    def receipts_on_pdf(cfg):
        put(cfg, 40150, "i", 1)           # auto_receipt: the till receipt
        put(cfg, 36, "i", 1)              # receipt_printer_index, and its name:
        put_text(cfg, 32434, 200, "PDF")  # the built-in printer
    s.edit("wr.cfg", receipts_on_pdf)

    # The second launch opens the same shop without a question.
    wid = s.open_till(**desktop)
    s.scan(wid, 1001)
    s.pay_cash(wid, "5000")
    harness.wait_for(lambda: s.printouts(), "receipt in printouts/")

    backup = os.path.join(shop, "backup")
    s.back_up(wid, backup)
    check(os.path.exists(os.path.join(backup, "film.dat")), "film.dat not backed up")
    check(s.close() == 0, "the second run did not end cleanly")

    check(s.exists(s.today("saleslog.dat")), "the sale was not logged in today's folder")
    wrong = wrong_modes(shop)
    check(not wrong, "readable by others:\n  " + "\n  ".join(wrong))


if __name__ == "__main__":
    harness.main(test)
