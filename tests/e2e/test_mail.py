"""Mail from the real program to servers on 127.0.0.1: the settings typed into
"Email target" (wrmail.cfg checked byte for byte), a sale, then "Email report"
and "Email daily items" arrive; with a server that never answers, the next sale goes through while
the mail hangs, and the close-down is not held up by it."""
import os
import struct
import subprocess
import tempfile
import time

from harness import Failure, check, main

SERVERS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "mail", "smtp_servers.py")


def start_servers():
    folder = tempfile.mkdtemp(prefix="tilo-mail-")
    proc = subprocess.Popen(["/usr/bin/python3", SERVERS, folder], stdin=subprocess.PIPE,
                            stdout=subprocess.PIPE, text=True)
    ports = dict((k, int(v)) for k, v in (w.split("=") for w in proc.stdout.readline().split()))
    check(len(ports) == 7, "the mail servers did not start")
    return proc, folder, ports


def events(folder, kind):
    path = os.path.join(folder, "events")
    return [open(os.path.join(path, n), "rb").read() for n in sorted(os.listdir(path))
            if n.endswith("-" + kind)]


def wait_for(folder, kind, timeout=20.0):
    deadline = time.time() + timeout
    while time.time() < deadline:
        found = events(folder, kind)
        if found:
            return found
        time.sleep(0.2)
    raise Failure("no %s event within %.0f s" % (kind, timeout))


def mail(new_session):
    proc, folder, ports = start_servers()
    s = new_session()
    try:
        wid = s.open_till()

        # Email setup, the third entry of File: the three addresses and the port.
        s.menu(wid, 0, 2)
        s.fill("Email target", "127.0.0.1\towner@example.com\ttill@shop.example\t\t%d" % ports["plain"])
        time.sleep(1.0)
        cfg = s.file("wrmail.cfg")
        check(len(cfg) == 560, "wrmail.cfg is %d bytes" % len(cfg))
        check(os.stat(os.path.join(s.shop, "wrmail.cfg")).st_mode & 0o777 == 0o600,
              "wrmail.cfg may be read by others")
        expected = bytearray(560)
        expected[80:84] = b"TSM1"
        struct.pack_into("<ii", expected, 84, ports["plain"], 0)
        for offset, text in ((320, b"127.0.0.1"), (400, b"owner@example.com"),
                             (480, b"till@shop.example")):
            expected[offset:offset + len(text)] = text
        check(cfg == bytes(expected), "wrmail.cfg differs: %r" % cfg)

        # A sale, then Email report (Activity, the fourth entry).
        s.scan(wid, 1001)
        s.pay_cash(wid, "5000")
        s.menu(wid, 10, 3)
        message = wait_for(folder, "plain-message")[0].decode("cp1252")
        s.answer("Finished")
        for words in ("FROM: till@shop.example\r\nTO: owner@example.com\r\n"
                      "SUBJECT: TILO report\r\n\r\nTILO report: ", "CORNER STORE\r\n",
                      "Today Transactions: ", "End report\r\n"):
            check(words in message, "the mail lacks %r:\n%s" % (words, message))

        # Email daily items (the next entry): today's rows ride in the body.
        s.menu(wid, 10, 4)
        deadline = time.time() + 20
        while len(events(folder, "plain-message")) < 2 and time.time() < deadline:
            time.sleep(0.2)
        items = events(folder, "plain-message")[1].decode("cp1252")
        s.answer("Finished")
        check("SUBJECT: TILO Daily items\r\n" in items and "1001" in items,
              "the daily items mail lacks the sale's item:\n%s" % items)
        check(os.path.exists(os.path.join(s.shop, "ES.CSV")), "ES.CSV was not written")

        # A server that never answers holds the next mail; the till sells on.
        s.edit("wrmail.cfg", lambda cfg: struct.pack_into("<i", cfg, 84, ports["silent"]))
        s.menu(wid, 10, 3)
        wait_for(folder, "silent-connect")
        s.scan(wid, 2401)
        s.pay_cash(wid, "5000")
        started = time.time()
        check(s.close() == 0, "tilo did not end cleanly")
        check(time.time() - started < 10, "the close-down waited on the silent server")
        sales = s.file(s.today("saleslog.dat"))
        check(len(sales) == 2 * 950, "saleslog.dat holds %d bytes" % len(sales))
    finally:
        proc.stdin.close()
        proc.wait()
        subprocess.run(["rm", "-rf", folder])


if __name__ == "__main__":
    main(mail)
