#!/usr/bin/python3
"""An FTP server on 127.0.0.1 for the upload tests, on a free port: user shop /
secret, home FOLDER/root.

Usage: ftp_server.py FOLDER. Prints "ftp=PORT" and serves until its standard
input closes.
"""
import logging
import os
import sys
import threading

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.ioloop import IOLoop
from pyftpdlib.servers import ThreadedFTPServer

FOLDER = sys.argv[1]
ROOT = os.path.join(FOLDER, "root")


def main():
    logging.disable(logging.CRITICAL)
    os.makedirs(ROOT, exist_ok=True)
    authorizer = DummyAuthorizer()
    authorizer.add_user("shop", "secret", ROOT, perm="elradfmwMT")
    FTPHandler.authorizer = authorizer
    server = ThreadedFTPServer(("127.0.0.1", 0), FTPHandler, ioloop=IOLoop())
    port = server.address[1]
    threading.Thread(target=server.serve_forever, daemon=True).start()
    print("ftp=%d" % port, flush=True)
    sys.stdin.read()


main()
