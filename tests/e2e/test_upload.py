"""Head office upload from the real program to an FTP server on 127.0.0.1: the
server, log-in and ticks typed into "Upload configuration" (upload.cfg checked
byte for byte), a sale, then "Upload head office report" sends the three files,
which arrive exactly as the program wrote them."""
import os
import socket
import subprocess
import tempfile
import time

from harness import Failure, check, main

SERVER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "mail", "ftp_server.py")
NAMES = ("Activity.txt", "Dlyitems.txt", "Reorder.txt")


def cash_sale(s, wid, item):
    s.type(wid, item)
    s.key(wid, "Return")
    s.key(wid, "F5")
    deadline = time.time() + 10
    while s.xdotool("getwindowfocus") == wid and time.time() < deadline:
        time.sleep(0.2)
    s.xdotool("type", "--delay", "60", "5000")
    time.sleep(0.3)
    s.xdotool("key", "Return")
    s.answer("Transaction committed, summary")


def upload(new_session):
    folder = tempfile.mkdtemp(prefix="tilo-ftp-")
    root = os.path.join(folder, "root")
    with socket.socket() as free:
        free.bind(("127.0.0.1", 0))
        port = free.getsockname()[1]
    proc = subprocess.Popen(["/usr/bin/python3", SERVER, root, str(port)], stdin=subprocess.PIPE)
    deadline = time.time() + 10
    while time.time() < deadline:
        with socket.socket() as probe:
            if probe.connect_ex(("127.0.0.1", port)) == 0:
                break
        time.sleep(0.1)
    s = new_session()
    try:
        s.start()
        wid = s.find_window("TILO Retail")
        s.log_on()
        time.sleep(1.0)

        # Head office report setup (Activity, sixth entry): server, log-in, three ticks.
        s.menu(wid, 10, 5)
        form = s.find_window("Upload configuration")
        time.sleep(0.3)
        s.type(form, "127.0.0.1:%d\tshop\tsecret\t \t\t \t\t " % port)
        s.key(form, "Return")
        time.sleep(1.0)
        cfg = s.file("upload.cfg")
        check(os.stat(os.path.join(s.shop, "upload.cfg")).st_mode & 0o777 == 0o600,
              "upload.cfg may be read by others")
        expected = bytearray(5040)
        for offset, text in ((1440, b"127.0.0.1:%d" % port), (1640, b"shop"), (1840, b"secret"),
                             (2640, b"Activity.txt"), (2840, b"Dlyitems.txt"),
                             (3040, b"Reorder.txt")):
            expected[offset:offset + len(text)] = text
        check(cfg == bytes(expected), "upload.cfg differs: %r" % cfg)

        # A sale, then Upload head office report (the next entry).
        cash_sale(s, wid, "1001")
        s.menu(wid, 10, 6)
        s.answer("Transmission")
        for name in NAMES:
            path = os.path.join(root, name)
            check(os.path.exists(path), "%s did not arrive" % name)
            sent = open(path, "rb").read()
            check(sent == s.file(name), "%s arrived changed" % name)
            check(sent.count(b"\r\n") > 1 and sent.count(b"\n") == sent.count(b"\r\n"),
                  "%s lines do not end in CR LF" % name)
        check(b"1001," in open(os.path.join(root, "Dlyitems.txt"), "rb").read(),
              "the day's items lack the sale")
        check(s.close() == 0, "tilo did not end cleanly")
    finally:
        proc.stdin.close()
        proc.wait()
        subprocess.run(["rm", "-rf", folder])


def test(new_session):
    upload(new_session)


if __name__ == "__main__":
    main(test)
