#!/usr/bin/env python3
"""An update and banner service for measurements: web_server.py PORT_FILE

Listens on a port of this machine that the system chooses, writes its number into PORT_FILE, and answers by the first
name of the path ("/slow/UpdateNotify.asp"). Runs until it is ended."""
import socketserver
import sys
import time

OFFER = (b"<input name=IsUpdateRequired value=1><input name=MessageText value='News'>"
         b"<input name=ProductPath value='http://127.0.0.1/'>")
OK = b"HTTP/1.0 200 OK\r\n\r\n"


class Service(socketserver.StreamRequestHandler):
    def handle(self):
        target = self.rfile.readline().split(b" ")[1]
        while self.rfile.readline().strip():
            pass
        getattr(self, target.split(b"/")[1].decode(), self.refusal)(target)

    def offer(self, _):
        self.wfile.write(OK + OFFER)

    def scripts(self, _):
        self.wfile.write(OK + b"<script>document.write('<input name=IsUpdateRequired value=0>')</script>"
                         b"<input value=\"1\" name='IsUpdateRequired' onfocus=\"close()\">"
                         b"<input name=IsUpdateRequired value=0>"
                         b"<input name=MessageText value='&quot;>&lt;script&gt;close()&lt;/script&gt;'>"
                         b"<input name=ProductPath value='javascript:close()'>")

    def refusal(self, _):
        self.wfile.write(b"HTTP/1.0 403 Forbidden\r\n\r\n")

    def silent(self, _):
        time.sleep(60)

    def slow(self, _):
        for byte in OK + OFFER:
            self.wfile.write(bytes([byte]))
            time.sleep(0.05)

    def soup(self, _):
        self.wfile.write(OK + b"<<!--a<input name='x><td<input =\"" * 8000)

    def loop(self, target):
        self.wfile.write(b"HTTP/1.0 302 Found\r\nLocation: " + target + b"\r\n\r\n")

    def file(self, _):
        self.wfile.write(b"HTTP/1.0 302 Found\r\nLocation: file:///C:/windows/win.ini\r\n\r\n")

    def huge(self, _):
        self.wfile.write(OK + b"x" * 10_000_000 + OFFER)


class Server(socketserver.ThreadingTCPServer):
    daemon_threads = True

    def handle_error(self, request, client_address):
        pass  # a browser that goes away in the middle is what is measured


with Server(("127.0.0.1", 0), Service) as server:
    with open(sys.argv[1], "w", encoding="ascii") as file:
        file.write(str(server.server_address[1]))
    server.serve_forever()
