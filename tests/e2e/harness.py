"""Drives the real tilo binary under Xvfb: a temporary shop made by the
installer, keystrokes through xdotool, screenshots through ImageMagick, and a
clean close (SIGTERM ends the run through the normal close-down)."""

import glob
import os
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time


class Failure(Exception):
    pass


def check(condition, message):
    if not condition:
        raise Failure(message)


def read_at(data, offset, fmt):
    """One little-endian value of struct format `fmt` at `offset`."""
    return struct.unpack_from("<" + fmt, data, offset)[0]


def text_at(data, offset, width):
    raw = data[offset:offset + width]
    return raw.split(b"\0", 1)[0].decode("cp1252")


def put(data, offset, fmt, value):
    """Writes one little-endian value of struct format `fmt` at `offset`."""
    struct.pack_into("<" + fmt, data, offset, value)


def put_text(data, offset, width, value):
    """Writes a Windows-1252 field of `width` bytes, padded with zeros."""
    data[offset:offset + width] = value.encode("cp1252").ljust(width, b"\0")


def f32(value):
    """A number as the program's 32-bit floats hold it."""
    return struct.unpack("<f", struct.pack("<f", value))[0]


FILM_RECORD = 1874  # one item of film.dat


def find_item(film, number):
    """The offset in film.dat's bytes of item `number`."""
    for at in range(0, len(film), FILM_RECORD):
        if read_at(film, at, "q") == number:
            return at
    raise Failure("item %d not in film.dat" % number)


def stock_of(film, number):
    return read_at(film, find_item(film, number) + 670, "i")


MEMBER_RECORD = 2094  # one customer of member.dat
# Where a customer's fields lie: the offset, and the width of a text or the
# struct format of a number.
MEMBER_FIELDS = {"name": (8, 30), "road": (38, 30), "town": (98, 30), "postcode": (128, 10),
                 "telephone": (138, 20), "title": (378, 6), "initials": (384, 8),
                 "group": (652, "i"), "terms": (1006, "i"), "last_used": (1122, 16),
                 "balance": (1554, "f"), "credit_limit": (1558, "f"), "tax": (1582, "q")}


def member_record(number, name, **fields):
    """A customer as a new card leaves one (category 1, terms row 1, last used
    NEW), with `fields` over that."""
    r = bytearray(MEMBER_RECORD)
    put(r, 0, "q", number)
    values = dict(name=name, group=1, terms=1, last_used="NEW")
    values.update(fields)
    for key, value in values.items():
        at, kind = MEMBER_FIELDS[key]
        if isinstance(kind, int):
            put_text(r, at, kind, value)
        else:
            put(r, at, kind, value)
    return bytes(r)


def wait_for(condition, what, timeout=15.0):
    deadline = time.time() + timeout
    while time.time() < deadline:
        if condition():
            return
        time.sleep(0.2)
    raise Failure("no %s within %.0f s" % (what, timeout))


def pdf_text(path):
    return subprocess.run(["pdftotext", "-layout", path, "-"], capture_output=True,
                          text=True, check=True).stdout


def barcode(pdf, png):
    """What the barcode on the first page of `pdf` reads, rendered into `png`.png."""
    subprocess.run(["pdftoppm", "-r", "200", "-png", "-singlefile", pdf, png], check=True)
    return subprocess.run(["zbarimg", "--quiet", "--raw", png + ".png"], capture_output=True,
                          text=True).stdout.strip()


class Line:
    """A pty pair: the program opens `port`, the test reads what arrives."""

    def __init__(self, folder, name):
        self.port = os.path.join(folder, name)
        peer = self.port + "-peer"
        self.proc = subprocess.Popen(["socat", "pty,raw,echo=0,link=" + self.port,
                                      "pty,raw,echo=0,link=" + peer])
        for _ in range(100):
            if os.path.exists(self.port) and os.path.exists(peer):
                break
            time.sleep(0.05)
        self.hold = os.open(self.port, os.O_RDWR | os.O_NOCTTY)  # keeps the line up
        self.peer = os.open(peer, os.O_RDWR | os.O_NOCTTY | os.O_NONBLOCK)

    def received(self, wait=3.0, quiet=0.5):
        got, deadline, last = b"", time.time() + wait, None
        while time.time() < deadline:
            try:
                chunk = os.read(self.peer, 4096)
            except BlockingIOError:
                chunk = b""
            if chunk:
                got, last = got + chunk, time.time()
            elif last and time.time() - last > quiet:
                break
            time.sleep(0.05)
        return got

    def close(self):
        os.close(self.peer)
        os.close(self.hold)
        self.proc.terminate()
        self.proc.wait()


class Session:
    def __init__(self, tilo, newshop, demo=True, screen=(1280, 1024), shop=None):
        self.tilo = os.path.abspath(tilo)
        self.newshop = os.path.abspath(newshop)
        self.screen = screen
        self.tmp = tempfile.mkdtemp(prefix="tilo-e2e-")
        self.shop = shop or os.path.join(self.tmp, "shop")
        self.xvfb = None
        self.app = None
        self.display = None
        if shop is None:
            args = [self.newshop, self.shop] + (["--demo"] if demo else [])
            subprocess.run(args, check=True, stdout=subprocess.DEVNULL)
        self._start_xvfb()

    # --- the X server -------------------------------------------------------
    def _start_xvfb(self):
        # Xvfb picks a free display itself and writes its number to the pipe, so
        # sessions started side by side never race for the same one.
        read_end, write_end = os.pipe()
        proc = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "%dx%dx24" % self.screen,
             "-nolisten", "tcp"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, pass_fds=(write_end,))
        os.close(write_end)
        number = b""
        deadline = time.time() + 20
        while not number.endswith(b"\n") and time.time() < deadline:
            chunk = os.read(read_end, 16)
            if not chunk:
                break
            number += chunk
        os.close(read_end)
        if not number.strip():
            proc.kill()
            raise Failure("no display could be started")
        self.xvfb, self.display = proc, ":" + number.decode().strip()

    def _env(self, display=None):
        env = dict(os.environ)
        env["DISPLAY"] = display or self.display
        env.pop("QT_QPA_PLATFORM", None)
        env.pop("WAYLAND_DISPLAY", None)
        env["XDG_RUNTIME_DIR"] = self.tmp
        return env

    def xdotool(self, *args, check_rc=True):
        r = subprocess.run(["xdotool"] + [str(a) for a in args], env=self._env(),
                           capture_output=True, text=True)
        if check_rc and r.returncode != 0:
            raise Failure("xdotool %s failed: %s" % (" ".join(map(str, args)), r.stderr))
        return r.stdout.strip()

    # --- the program --------------------------------------------------------
    def start(self, args=(), umask=-1, env=None):
        """Starts tilo in the shop's folder with `args`; `umask` (say 0) as the
        desktop would hand it down, `env` laid over the session's environment."""
        # A fresh shop shows the tip of the day after the first log-on of a run.
        self.tip_pending = True
        self.log = open(os.path.join(self.tmp, "tilo.log"), "w")
        environment = self._env()
        environment.update(env or {})
        self.app = subprocess.Popen([self.tilo] + list(args),
                                    cwd=self.shop if os.path.isdir(self.shop) else self.tmp,
                                    env=environment, umask=umask,
                                    stdout=self.log, stderr=subprocess.STDOUT)

    def find_window(self, name, timeout=20.0):
        """The id of a visible window whose title is exactly `name`."""
        deadline = time.time() + timeout
        while time.time() < deadline:
            if self.app is not None and self.app.poll() is not None:
                raise Failure("tilo ended (%s) while waiting for %r" % (self.app.returncode, name))
            out = self.xdotool("search", "--onlyvisible", "--name", "^%s$" % name, check_rc=False)
            if out:
                return out.splitlines()[-1]
            time.sleep(0.2)
        raise Failure("no window %r within %.0f s" % (name, timeout))

    def geometry(self, wid):
        out = self.xdotool("getwindowgeometry", "--shell", wid)
        values = dict(line.split("=", 1) for line in out.splitlines() if "=" in line)
        return int(values["X"]), int(values["Y"]), int(values["WIDTH"]), int(values["HEIGHT"])

    def focus(self, wid):
        self.xdotool("windowfocus", "--sync", wid)

    def type(self, wid, text):
        self.focus(wid)
        self.xdotool("type", "--delay", "40", text)

    def key(self, wid, *keys):
        self.focus(wid)
        for k in keys:
            self.xdotool("key", "--delay", "60", k)
            time.sleep(0.1)

    def answer(self, title, key="Return", timeout=20.0):
        """Presses `key` in the message box titled `title`, again if a busy
        machine let the first press arrive before the box could take it."""
        wid = self.find_window(title, timeout)
        for _ in range(5):
            time.sleep(0.3)
            self.key(wid, key)
            deadline = time.time() + 3
            while time.time() < deadline:
                visible = self.xdotool("search", "--onlyvisible", "--name", "^%s$" % title,
                                       check_rc=False).split()
                if wid not in visible:
                    return wid
                time.sleep(0.1)
        raise Failure("the box %r did not take %s" % (title, key))

    def log_on(self, clerk=1, password="7351", timeout=20.0):
        """Logs `clerk` on at the log-on form that every start opens after the
        splash: the arrow key steps to the clerk, then the password and Enter; the
        tip of the day that follows the run's first log-on is closed."""
        form = self.find_window("USER LOGON", timeout)
        time.sleep(0.3)
        self.key(form, *(["Up"] * (clerk - 1)))
        self.type(form, password)
        self.key(form, "Return")
        if getattr(self, "tip_pending", False):
            # Closed with its start-up tick left set, so the next run shows it too.
            self.tip_pending = False
            tip = self.find_window("TIP OF THE DAY", 10.0)
            time.sleep(0.3)
            self.key(tip, "Return")
            time.sleep(0.3)

    def open_till(self, clerk=1, password="7351", **start):
        """Starts the program (`start` as for start()), logs `clerk` on and
        returns the main window as its title names the clerk."""
        self.start(**start)
        self.find_window("TILO Retail")
        self.log_on(clerk, password)
        wid = self.find_window("TILO Retail    Assoc: %d, .*" % clerk)
        time.sleep(0.5)
        return wid

    def menu(self, wid, rights, downs):
        """Opens the File menu, moves `rights` menus on and picks the entry
        `downs` below the first."""
        self.key(wid, "alt+f")
        time.sleep(0.3)
        self.key(wid, *(["Right"] * rights + ["Down"] * downs + ["Return"]))

    def back_up(self, wid, folder):
        """Utilities > File backup into `folder`, answering its closing box."""
        self.key(wid, "alt+u")
        time.sleep(0.5)
        self.xdotool("key", "b")
        prompt = self.form("File backup")
        self.key(prompt, "ctrl+a")
        self.xdotool("type", "--delay", "30", folder)
        self.xdotool("key", "Return")
        time.sleep(1.0)
        self.answer("File backup")

    def form(self, title):
        """The window titled `title`, once it is up and has settled."""
        wid = self.find_window(title)
        time.sleep(0.5)
        return wid

    def fill(self, title, text, *keys):
        """Types `text` into the window titled `title` once it is up, then
        presses `keys` (Return when none are given); returns the window."""
        wid = self.find_window(title)
        time.sleep(0.3)
        self.type(wid, text)
        self.key(wid, *(keys or ("Return",)))
        return wid

    def scan(self, wid, *numbers):
        """Each item number typed into the item box and entered."""
        for number in numbers:
            self.type(wid, str(number))
            self.key(wid, "Return")

    def pay_cash(self, wid, typed, summary=True, press_f5=True):
        """F5, the amount typed once the cash form has the focus, and Enter;
        then Enter on the summary box unless `summary` is False."""
        if press_f5:
            self.key(wid, "F5")
        deadline = time.time() + 10
        while self.xdotool("getwindowfocus") == wid and time.time() < deadline:
            time.sleep(0.2)
        check(self.xdotool("getwindowfocus") != wid, "the cash form did not take the focus")
        self.xdotool("type", "--delay", "60", typed)
        time.sleep(0.3)
        self.xdotool("key", "Return")
        if summary:
            self.answer("Transaction committed, summary")

    def printouts(self):
        """The PDFs printed so far, oldest first."""
        return sorted(glob.glob(os.path.join(self.shop, "printouts", "*.pdf")),
                      key=os.path.getmtime)

    def keep(self, wid, name, png=None):
        """The window's part of a screenshot (a new one unless `png` is given),
        kept when TILO_SCREENSHOTS names a folder."""
        folder = os.environ.get("TILO_SCREENSHOTS")
        if not folder:
            return
        os.makedirs(folder, exist_ok=True)
        if png is None:
            png = os.path.join(self.tmp, "screen.png")
            self.screenshot(png)
        x, y, w, h = self.geometry(wid)
        subprocess.run(["convert", png, "-crop", "%dx%d+%d+%d" % (w, h, x, y), "+repage",
                        os.path.join(folder, name)], check=True)

    def screenshot(self, path):
        subprocess.run(["import", "-window", "root", path], env=self._env(), check=True)

    def close(self, timeout=20.0):
        """Ends the run the way a shutdown does and waits for the close-down."""
        if self.app is None:
            return None
        self.app.send_signal(signal.SIGTERM)
        try:
            rc = self.app.wait(timeout)
        except subprocess.TimeoutExpired:
            self.app.kill()
            raise Failure("tilo did not close within %.0f s" % timeout)
        self.app = None
        return rc

    def ended(self, what, timeout=20.0):
        """Waits for the program to end by itself after `what`; its exit code."""
        try:
            rc = self.app.wait(timeout)
        except subprocess.TimeoutExpired:
            raise Failure("tilo did not end after %s" % what)
        self.app = None
        return rc

    def with_pole_and_drawer(self, edit=None):
        """A first run makes the settings; then the pole goes on COM1 and a
        direct drawer on COM2, both socat pty pairs mapped by ports.cfg.
        `edit(cfg)` may change more of wr.cfg before it is written back.
        Returns the two lines (pole, drawer)."""
        self.start()
        self.find_window("TILO Retail")
        check(self.close() == 0, "first run did not end cleanly")
        pole, drawer = Line(self.tmp, "pole"), Line(self.tmp, "drawer")
        with open(os.path.join(self.shop, "ports.cfg"), "w") as f:
            f.write("COM1=%s\nCOM2=%s\n" % (pole.port, drawer.port))

        def devices(cfg):
            put(cfg, 40550, "i", 2)            # pole_enabled
            put(cfg, 40558, "i", 0)            # pole_port: COM1
            put_text(cfg, 33410, 32, "27,64")  # pole_clear
            put(cfg, 40586, "i", 0)            # drawer_mode: direct
            put(cfg, 944, "q", 1)              # drawer_port: COM2
            put(cfg, 928, "q", 7)              # drawer_open_char
            put(cfg, 912, "q", 2)              # drawer_repeat
            if edit:
                edit(cfg)
        self.edit("wr.cfg", devices)
        return pole, drawer

    def file(self, name):
        with open(os.path.join(self.shop, name), "rb") as f:
            return f.read()

    def today(self, name):
        """The path of `name` in today's history folder."""
        t = time.localtime()
        return "%d/%d/%d/%s" % (t.tm_year, t.tm_mon, t.tm_mday, name)

    def edit(self, name, change):
        """Rewrites the shop's file `name` after `change(bytearray)`."""
        data = bytearray(self.file(name))
        change(data)
        with open(os.path.join(self.shop, name), "wb") as f:
            f.write(bytes(data))

    def exists(self, name):
        return os.path.exists(os.path.join(self.shop, name))

    def finish(self):
        if self.app is not None:
            self.app.kill()
            self.app.wait()
        if self.xvfb is not None:
            self.xvfb.kill()
            self.xvfb.wait()
        shutil.rmtree(self.tmp, ignore_errors=True)


def main(test):
    """Runs test(session_factory) and reports in the plain closing form."""
    tilo, newshop = sys.argv[1], sys.argv[2]
    sessions = []

    def factory(**kwargs):
        s = Session(tilo, newshop, **kwargs)
        sessions.append(s)
        return s

    try:
        test(factory)
    except Failure as e:
        print("FAILED:", e)
        for s in sessions:
            log = os.path.join(s.tmp, "tilo.log")
            if os.path.exists(log):
                print("--- tilo output ---\n" + open(log).read())
        print("0 passed, 1 failed")
        sys.exit(1)
    finally:
        for s in sessions:
            s.finish()
    print("1 passed, 0 failed")
