#!/usr/bin/python3
"""Mail servers on 127.0.0.1 for the mail tests, one process, each on a free port.

  plain   accepts everything and records each message
  reject  refuses the sender (550) and whatever follows
  hangup  closes each connection at once
  silent  accepts and never says a word
  raw     answers every command with a success and records the bytes of the session
  secure  demands STARTTLS, then a log-in as shop / secret
  notls   offers no STARTTLS; records any log-in tried all the same

Usage: smtp_servers.py FOLDER. Makes a certificate authority (FOLDER/ca.pem), a
server certificate for 127.0.0.1 signed by it, and a second authority that
signed nothing (FOLDER/other_ca.pem); prints one line "plain=PORT reject=PORT ...".
Every event goes into a file of its own, FOLDER/events/NNNN-SERVER-EVENT; a
message's file holds "HELO: ...", "FROM: ...", "TO: ..." lines, a blank line and
the data exactly as received. Runs until its standard input closes.
"""
import asyncio
import logging
import os
import ssl
import subprocess
import sys

from aiosmtpd.smtp import SMTP, AuthResult, LoginPassword

FOLDER = sys.argv[1]
EVENTS = os.path.join(FOLDER, "events")
count = 0


def record(server, event, text=b""):
    global count
    count += 1
    name = os.path.join(EVENTS, "%04d-%s-%s" % (count, server, event))
    with open(name + ".part", "wb") as f:
        f.write(text)
    os.rename(name + ".part", name)


def openssl(*args):
    subprocess.run(["openssl", *args], check=True, capture_output=True, cwd=FOLDER)


def make_certificates():
    ec = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"]
    openssl("req", "-x509", *ec, "-keyout", "ca.key", "-out", "ca.pem", "-days", "2",
            "-subj", "/CN=Test shop CA")
    openssl("req", "-x509", *ec, "-keyout", "other.key", "-out", "other_ca.pem", "-days", "2",
            "-subj", "/CN=Other CA")
    openssl("req", *ec, "-keyout", "server.key", "-out", "server.csr", "-subj", "/CN=127.0.0.1")
    with open(os.path.join(FOLDER, "san.ext"), "w") as f:
        f.write("subjectAltName=IP:127.0.0.1,DNS:localhost\n")
    openssl("x509", "-req", "-in", "server.csr", "-CA", "ca.pem", "-CAkey", "ca.key",
            "-CAcreateserial", "-out", "server.pem", "-days", "2", "-extfile", "san.ext")


class Recorder:
    def __init__(self, name, reject=False):
        self.name = name
        self.reject = reject

    async def handle_HELO(self, server, session, envelope, hostname):
        session.host_name = hostname
        return "250 {}".format(server.hostname)

    async def handle_EHLO(self, server, session, envelope, hostname, responses):
        session.host_name = hostname
        return responses

    async def handle_MAIL(self, server, session, envelope, address, options):
        if self.reject:
            record(self.name, "rejected", address.encode("latin-1"))
            return "550 5.7.1 Sender refused"
        envelope.mail_from = address
        return "250 OK"

    async def handle_RCPT(self, server, session, envelope, address, options):
        if self.reject:
            return "503 5.5.1 No sender"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        head = "HELO: %s\nFROM: %s\nTO: %s\n\n" % (session.host_name, envelope.mail_from,
                                                   ",".join(envelope.rcpt_tos))
        record(self.name, "message", head.encode("latin-1") + envelope.original_content)
        return "250 OK"


def authenticator(name):
    def check(server, session, envelope, mechanism, data):
        if isinstance(data, LoginPassword):
            user, password = data.login.decode(), data.password.decode()
            record(name, "auth", ("%s:%s" % (user, password)).encode())
            if (user, password) == ("shop", "secret"):
                return AuthResult(success=True)
        return AuthResult(success=False, handled=False)
    return check


async def hang_up(reader, writer):
    record("hangup", "connect")
    writer.close()


async def transcribe(reader, writer):
    received = b""
    writer.write(b"220 raw\r\n")
    in_data = False
    while True:
        line = await reader.readline()
        if not line:
            break
        received += line
        if in_data:
            if line == b".\r\n":
                in_data = False
                writer.write(b"250 OK\r\n")
        elif line.upper().startswith(b"DATA"):
            in_data = True
            writer.write(b"354 Go ahead\r\n")
        elif line.upper().startswith(b"QUIT"):
            writer.write(b"221 Bye\r\n")
        else:
            writer.write(b"250 OK\r\n")
        await writer.drain()
    record("raw", "session", received)
    writer.close()


async def stay_silent(reader, writer):
    record("silent", "connect")
    await reader.read()  # until the client gives up
    writer.close()


async def main():
    # The refusals and broken sessions the tests provoke are not news.
    logging.getLogger("mail.log").setLevel(logging.CRITICAL)
    os.makedirs(EVENTS, exist_ok=True)
    make_certificates()
    tls = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    tls.load_cert_chain(os.path.join(FOLDER, "server.pem"), os.path.join(FOLDER, "server.key"))
    loop = asyncio.get_running_loop()
    factories = {
        "plain": lambda: SMTP(Recorder("plain"), hostname="test.local"),
        "reject": lambda: SMTP(Recorder("reject", reject=True), hostname="test.local"),
        "secure": lambda: SMTP(Recorder("secure"), hostname="test.local", tls_context=tls,
                               require_starttls=True, auth_required=True,
                               authenticator=authenticator("secure")),
        "notls": lambda: SMTP(Recorder("notls"), hostname="test.local", auth_require_tls=False,
                              authenticator=authenticator("notls")),
    }
    ports = {}
    servers = []
    for name, factory in factories.items():
        server = await loop.create_server(factory, "127.0.0.1", 0)
        servers.append(server)
        ports[name] = server.sockets[0].getsockname()[1]
    for name, handler in (("hangup", hang_up), ("silent", stay_silent), ("raw", transcribe)):
        server = await asyncio.start_server(handler, "127.0.0.1", 0)
        servers.append(server)
        ports[name] = server.sockets[0].getsockname()[1]
    print(" ".join("%s=%d" % item for item in ports.items()), flush=True)
    # Until the test closes our standard input.
    await loop.run_in_executor(None, sys.stdin.read)


if __name__ == "__main__":
    asyncio.run(main())
