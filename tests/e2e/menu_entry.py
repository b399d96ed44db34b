"""The installed package's menu entry, started as a desktop starts it: its Exec
line, with the package's bin folder first on the PATH, in an empty home. The
first launch asks for the demo shop, makes it in ~/TILO, and TILO opens there at
the log-on. Run by scripts/package --check on the package installed into a
temporary root:

    python3 tests/e2e/menu_entry.py ROOT [SCREENSHOT.png]
"""

import os
import shlex
import shutil
import sys
import tempfile

import harness
from harness import check, find_item

ENTRY = "usr/share/applications/org.tilo_retail.tilo.desktop"


def exec_line(root):
    with open(os.path.join(root, ENTRY)) as f:
        for line in f:
            if line.startswith("Exec="):
                return shlex.split(line[len("Exec="):].strip())
    raise harness.Failure("the menu entry has no Exec line")


def run(root, home, screenshot):
    bin_dir = os.path.join(root, "usr", "bin")
    args = exec_line(root)
    program = shutil.which(args[0], path=bin_dir)
    check(program is not None, "%s is not in the package's %s" % (args[0], bin_dir))
    shop = os.path.join(home, "TILO")
    s = harness.Session(program, os.path.join(bin_dir, "tilo-newshop"), shop=shop)
    try:
        path = bin_dir + os.pathsep + os.environ.get("PATH", "")
        s.start(args=args[1:], env={"HOME": home, "TILO_SHOP": "", "PATH": path})
        s.answer("Shop folder", key="y")
        s.log_on()
        wid = s.find_window("TILO Retail    Assoc: 1, .*")
        check(os.readlink("/proc/%d/cwd" % s.app.pid) == shop, "TILO did not open in ~/TILO")
        find_item(s.file("film.dat"), 1001)
        if screenshot:
            s.screenshot(screenshot)
        check(s.close() == 0, "TILO did not end cleanly")
    except harness.Failure:
        log = os.path.join(s.tmp, "tilo.log")
        if os.path.exists(log):
            print("--- tilo output ---\n" + open(log).read())
        raise
    finally:
        s.finish()


def main():
    root = os.path.abspath(sys.argv[1])
    screenshot = os.path.abspath(sys.argv[2]) if len(sys.argv) > 2 else None
    home = tempfile.mkdtemp(prefix="tilo-home-")
    try:
        run(root, home, screenshot)
    except harness.Failure as e:
        print("FAILED:", e)
        sys.exit(1)
    finally:
        shutil.rmtree(home, ignore_errors=True)
    print("the menu entry opened the shop in ~/TILO")


if __name__ == "__main__":
    main()
