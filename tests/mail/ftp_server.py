#!/usr/bin/python3
"""An FTP server on 127.0.0.1 for the upload tests: user shop / secret, home ROOT.

Usage: ftp_server.py ROOT PORT. Serves until its standard input closes.
"""
import logging
import os
import sys
import threading

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.ioloop import IOLoop
from pyftpdlib.servers import ThreadedFTPServer

ROOT, PORT = sys.argv[1], int(sys.argv[2])


def main():
    logging.disable(logging.CRITICAL)
    os.makedirs(ROOT, exist_ok=True)
    authorizer = DummyAuthorizer()
    authorizer.add_user("shop", "secret", ROOT, perm="elradfmwMT")
    FTPHandler.authorizer = authorizer
    server = ThreadedFTPServer(("127.0.0.1", PORT), FTPHandler, ioloop=IOLoop())
    threading.Thread(target=server.serve_forever, daemon=True).start()
    sys.stdin.read()


main()
