"""A local HTTPS server with a certificate authority of its own, whose feed a test changes."""

import http.server
import os
import ssl
import subprocess
import threading

_ITEM = """<item><title>Tarvik</title><link>https://example.org/tarvik/{short}</link>
<sparkle:version>{build}</sparkle:version><sparkle:shortVersionString>{short}</sparkle:shortVersionString></item>"""


def feed(*versions):
    """An appcast of (build, short version)."""
    items = "".join(_ITEM.format(build=build, short=short) for build, short in versions)
    return ('<?xml version="1.0"?><rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">'
            f"<channel><title>Tarvik</title>{items}</channel></rss>").encode()


class FeedServer:
    """`answer` is the body that the feed has, or a function that gets the request's handler."""

    def __init__(self, folder):
        self.folder, self.answer, self.asked = folder, feed(), 0
        self.certificates = os.path.join(folder, "authority.pem")
        self.url = None

    def __enter__(self):
        self._make_certificates()
        owner = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                owner.asked += 1
                if callable(owner.answer):
                    owner.answer(self)
                else:
                    self.send_response(200)
                    self.send_header("Content-Length", str(len(owner.answer)))
                    self.end_headers()
                    self.wfile.write(owner.answer)

            def log_message(self, *_):
                pass

        self._server = _Quiet(("127.0.0.1", 0), Handler)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self._path("server.pem"), self._path("server.key"))
        self._server.socket = context.wrap_socket(self._server.socket, server_side=True)
        self.url = f"https://localhost:{self._server.server_port}/appcast.xml"
        threading.Thread(target=self._server.serve_forever, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self._server.shutdown()
        self._server.server_close()

    def _path(self, name):
        return os.path.join(self.folder, name)

    def _make_certificates(self):
        os.makedirs(self.folder, exist_ok=True)
        self._openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=Test authority",
                      "-keyout", self._path("authority.key"), "-out", self.certificates)
        self._openssl("req", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=localhost", "-keyout",
                      self._path("server.key"), "-out", self._path("server.csr"))
        with open(self._path("names"), "w", encoding="utf-8") as file:
            file.write("subjectAltName=DNS:localhost\n")
        self._openssl("x509", "-req", "-in", self._path("server.csr"), "-CA", self.certificates, "-CAkey",
                      self._path("authority.key"), "-CAcreateserial", "-days", "2", "-extfile", self._path("names"),
                      "-out", self._path("server.pem"))

    @staticmethod
    def _openssl(*arguments):
        subprocess.run(["openssl", *arguments], check=True, capture_output=True)


class _Quiet(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):
        """A client that hangs up, as it does in these tests, is no news."""
