#!/usr/bin/env python3
"""A time stamp server for the signing test. Prints its address and a line for each stamp.
FOLDER contains its certificate, time.pem, and its key, time-key.pem."""

import http.server
import subprocess
import sys
from pathlib import Path

FOLDER = Path(sys.argv[1])
SETTINGS = f"""
[tsa]
default_tsa = stamps
[stamps]
serial = {FOLDER}/serial
signer_cert = {FOLDER}/time.pem
signer_key = {FOLDER}/time-key.pem
signer_digest = sha256
default_policy = 1.2.3.4.1
digests = sha1, sha256, sha384, sha512
ess_cert_id_chain = no
"""


class Stamps(http.server.BaseHTTPRequestHandler):
    def do_POST(self):
        query, reply = FOLDER / "query", FOLDER / "reply"
        query.write_bytes(self.rfile.read(int(self.headers["Content-Length"])))
        subprocess.run(["openssl", "ts", "-reply", "-config", FOLDER / "time.cnf", "-section",
                        "stamps", "-queryfile", query, "-out", reply], check=True)
        self.send_response(200)
        self.send_header("Content-Type", "application/timestamp-reply")
        self.end_headers()
        self.wfile.write(reply.read_bytes())
        print("stamped", flush=True)

    def log_message(self, *_):
        pass


(FOLDER / "time.cnf").write_text(SETTINGS)
(FOLDER / "serial").write_text("01\n")
server = http.server.HTTPServer(("127.0.0.1", 0), Stamps)
print(f"http://127.0.0.1:{server.server_port}/", flush=True)
server.serve_forever()
