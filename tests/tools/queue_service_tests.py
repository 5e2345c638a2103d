"""What the queue service refuses, and how it misbehaves. Without the library."""

import base64
import contextlib
import json
import re
import socket
import ssl
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path
from typing import Iterator
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD, ROOT  # noqa: E402
import queue_message  # noqa: E402
import queue_service  # noqa: E402
from queue_service import Behaviour, QueueService  # noqa: E402

ADDRESS = "127.0.0.1"
FIELDS = {
    "schema": "sys_info_base/1.1.0", "pc_touchenabled": "false", "pc_battery": "unknown", "pc_architecture": "x64",
    "os_name": "Windows 10", "os_version": "10.0.17763.253", "os_architecture": "bit_64",
    "os_screenresolution": "1920x1080", "os_language": "en-US", "os_country": "US", "pc_manufacturer": "Maker",
    "pc_modelname": "Model \"7\"", "pc_category": "Computer.Notebook.Sub", "pc_sku": "", "app_id": "scan/1.2.3.4",
    "sys_uuid": "3D1219C7-C4C5-404A-AA1F-6D2A48ADFDA4", "app_deployed_id": "",
    "app_deployed_uuid": "0f8b2c1e-4d53-4e6a-9b7c-2a1d3e5f7081",
    "app_session_uuid": "1f8b2c1e-4d53-4e6a-9b7c-2a1d3e5f7081",
}
TEXT = json.dumps(FIELDS, separators=(",", ":"))


def body_of(text: str) -> str:
    encoded = base64.b64encode(text.encode()).decode()
    return f'{{"messages":[{{"body":"=?media_type:application/json.b64?={encoded}"}}]}}'


def request(body: str = body_of(TEXT), head: str = "") -> str:
    return head.replace("{length}", str(len(body))) + body


HEAD = ("POST /projects/P%20%e9/queues/sys_info_base/messages HTTP/1.1\r\nHost: 127.0.0.1\r\nPragma: no-cache\r\n"
        "Cache-Control: no-cache\r\nContent-Type: application/json\r\nAccept: application/json\r\n"
        "Authorization: Bearer tok\r\nUser-Agent: scan/1.2.3.4\r\nContent-Length: {length}\r\n\r\n")
GOOD = request(head=HEAD)


class Strictness(unittest.TestCase):
    def check_wrong(self, raw: str, expected: str):
        wrong = queue_message.read_message(raw.encode("latin-1")).wrong
        self.assertTrue(any(expected in each for each in wrong), wrong)

    def check_changed(self, old: str, new: str, expected: str):
        self.assertIn(old, GOOD)
        with self.subTest(new):
            self.check_wrong(GOOD.replace(old, new), expected)

    def check_text(self, text: str, expected: str):
        with self.subTest(text[:40]):
            self.check_wrong(request(body_of(text), HEAD), expected)

    def test_good_message_has_nothing_wrong(self):
        message = queue_message.read_message(GOOD.encode())
        self.assertEqual([], message.wrong)
        self.assertEqual(("P%20%e9", "sys_info_base", "tok", "scan/1.2.3.4"),
                         (message.project, message.queue, message.token, message.agent))
        self.assertEqual(FIELDS, message.fields)
        self.assertEqual(GOOD.encode(), message.raw)

    def test_empty_token_is_taken(self):
        self.assertEqual([], queue_message.read_message(GOOD.replace(" tok", "").encode()).wrong)

    def test_request_line(self):
        for old, new in (("POST", "PUT"), ("HTTP/1.1", "HTTP/1.0"), ("/projects/", "/project/"),
                         ("/queues/", "/queue/"), ("/messages HTTP", "/messages/ HTTP"), ("%e9", "%E9"),
                         ("P%20%e9", ""), ("sys_info_base/", "sys info/")):
            self.check_changed(old, new, "the request line is")

    def test_headers_names_and_their_order(self):
        for old, new in (("Accept: application/json\r\n", ""), ("Content-Type", "content-type"),
                         ("Pragma: no-cache\r\nCache-Control: no-cache\r\n",
                          "Cache-Control: no-cache\r\nPragma: no-cache\r\n"),
                         ("\r\nAccept", "\r\nCookie: a\r\nAccept"),
                         ("Pragma: no-cache\r\n", "Pragma: no-cache\r\nPragma: no-cache\r\n")):
            self.check_changed(old, new, "the headers are")

    def test_header_values(self):
        for old, new in (("Content-Type: application/json", "Content-Type: text/json"),
                         ("Accept: application/json", "Accept:application/json"),
                         ("Accept: application/json", "Accept: */*"), ("Bearer tok", "Basic tok"),
                         ("User-Agent: scan/1.2.3.4", "User-Agent: scan"), ("Cache-Control: no-cache", "Cache-Control: x")):
            self.check_changed(old, new, f"the header {old.partition(':')[0].replace('Bearer tok', 'Authorization')} is")

    def test_content_length(self):
        self.check_wrong(GOOD + " ", "Content-Length is")

    def test_envelope(self):
        for old, new in (('{"messages"', '{ "messages"'), ('"}]}', '"},{}]}'), ("=?media_type", "media_type"),
                         (".b64?=", ".b64?")):
            self.check_changed(old, new, "the envelope is")

    def test_base64(self):
        self.check_changed("b64?=", "b64?=!", "no Base64")
        self.check_wrong(request(body_of("{}").replace("e30=", "e31="), HEAD), "bits to spare")
        self.check_wrong(request(body_of("\u00e9"), HEAD), "no Base64 of printable text")

    def test_json(self):
        self.check_text(TEXT[:-1], "no JSON")
        self.check_text(TEXT.replace('{"schema"', '{"pc_sku":"","schema"'), "a field comes twice")
        self.check_text(TEXT.replace('":"', '": "'), "without spaces")
        self.check_text(TEXT.replace('"1920x1080"', "1920"), "without spaces")

    def test_json_of_another_kind(self):
        for text in ("[]", '"text"', "7", "null"):
            self.check_text(text, "the JSON is no object")

    def test_fields(self):
        self.check_text(TEXT.replace('"pc_sku":"",', ""), "the field pc_sku is missing")
        self.check_text(TEXT.replace('{"schema"', '{"more":"","schema"'), "the field more is not known")
        for name, value in (("schema", "sys_info_base/1.1.1"), ("pc_battery", "True"), ("pc_architecture", "x86"),
                            ("os_name", " Windows"), ("os_version", "10"), ("os_architecture", "64"),
                            ("os_screenresolution", "1920"), ("os_language", "EN-us"), ("os_country", "us"),
                            ("pc_category", "Notebook"), ("app_id", "scan"), ("sys_uuid", "3d12"),
                            ("app_deployed_uuid", "{0F8B}"), ("app_session_uuid", "")):
            self.check_text(json.dumps(FIELDS | {name: value}, separators=(",", ":")), f"the field {name} is")
        self.check_text(TEXT.replace("scan/1.2.3.4", "scan/1.2.3.5"), "app_id is not the User-Agent")


class ServiceTestCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        (BUILD / "play").mkdir(parents=True, exist_ok=True)
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory(dir=BUILD / "play")))

    @contextlib.contextmanager
    def connect(self, port: int) -> Iterator[ssl.SSLSocket]:
        context = ssl.create_default_context(cafile=self.folder / "root.pem")
        with socket.create_connection((ADDRESS, port), timeout=20) as plain, \
                context.wrap_socket(plain, server_hostname=ADDRESS) as channel:
            yield channel

    def exchange_bytes(self, port: int, raw: str = GOOD) -> bytes:
        with self.connect(port) as channel:
            channel.sendall(raw.encode("latin-1"))
            return b"".join(iter(lambda: channel.recv(65536), b""))

    def exchange(self, port: int, raw: str = GOOD) -> str:
        return self.exchange_bytes(port, raw).decode()


class Service(ServiceTestCase):
    def serve(self, misbehaviour: str = "none", certificate: str = "valid", redirect_to: str = "") -> QueueService:
        return QueueService(self.folder, ADDRESS, 0, Behaviour(misbehaviour, certificate, redirect_to))

    def test_takes_a_good_message_on_any_port(self):
        taken = []
        with QueueService(self.folder, ADDRESS, 0, on_message=taken.append) as service:
            self.assertTrue(self.exchange(service.port).startswith("HTTP/1.1 200 OK\r\n"))
        self.assertEqual([GOOD.encode()], [message.raw for message in taken])
        self.assertEqual(taken, service.seen.messages)
        self.assertEqual([ADDRESS], service.seen.connections)

    def test_answers_what_is_wrong(self):
        with self.serve() as service:
            answer = self.exchange(service.port, GOOD.replace("/queues/", "/queue/"))
        self.assertTrue(answer.startswith("HTTP/1.1 400 Bad Request\r\n"))
        self.assertEqual({"wrong": ["the request line is 'POST /projects/P%20%e9/queue/sys_info_base/messages "
                                    "HTTP/1.1'"]}, json.loads(answer.partition("\r\n\r\n")[2]))

    def test_answers_an_error_status(self):
        for status in (401, 500):
            with self.subTest(status), self.serve(f"status-{status}") as service:
                self.assertTrue(self.exchange(service.port).startswith(f"HTTP/1.1 {status} "))

    def test_redirects(self):
        with self.serve("redirect", redirect_to="https://127.0.0.2/there") as service:
            answer = self.exchange(service.port)
        self.assertTrue(answer.startswith("HTTP/1.1 302 Found\r\n"))
        self.assertIn("\r\nLocation: https://127.0.0.2/there\r\n", answer)

    def test_never_answers(self):
        with self.serve("never-answer") as service, self.connect(service.port) as channel:
            channel.sendall(GOOD.encode())
            self.assertTrue(service.wait_for(lambda seen: seen.messages))
            channel.settimeout(1)
            self.assertRaises(TimeoutError, channel.recv, 1)

    def test_never_shakes_hands(self):
        with self.serve("no-handshake") as service, socket.create_connection((ADDRESS, service.port)) as channel:
            channel.sendall(b"\x16\x03\x01")
            channel.settimeout(1)
            self.assertRaises(TimeoutError, channel.recv, 1)

    def test_shakes_hands_late(self):
        with mock.patch.object(queue_service, "HANDSHAKE_SECONDS", 0.5), self.serve("late-handshake") as service:
            started = time.monotonic()
            answer = self.exchange(service.port)
        self.assertTrue(answer.startswith("HTTP/1.1 200 OK\r\n"))
        self.assertGreaterEqual(time.monotonic() - started, 0.5)

    def test_answers_as_it_is_reported_and_then_as_usual(self):
        with QueueService(self.folder, ADDRESS, 0, Behaviour(answers=(b"one", b"\xff\0"))) as service:
            self.assertEqual([b"one", b"\xff\0"], [self.exchange_bytes(service.port) for _ in range(2)])
            self.assertTrue(self.exchange(service.port).startswith("HTTP/1.1 200 OK\r\n"))

    def test_serves_without_tls(self):
        with QueueService(self.folder, ADDRESS, 0, Behaviour(plain=True)) as service, \
                socket.create_connection((ADDRESS, service.port), timeout=20) as channel:
            channel.sendall(GOOD.encode())
            self.assertTrue(channel.recv(65536).startswith(b"HTTP/1.1 200 OK\r\n"))
        self.assertEqual([GOOD.encode()], [message.raw for message in service.seen.messages])

    def test_accepts_and_resets(self):
        with self.serve("reset") as service:
            with self.assertRaises(OSError), self.connect(service.port):
                pass
            self.assertEqual(1, len(service.seen.connections))

    def test_sends_its_headers_slowly(self):
        with self.serve("slow-headers") as service:
            started = time.monotonic()
            answer = self.exchange(service.port)
        self.assertTrue(answer.startswith("HTTP/1.1 200 OK\r\n"))
        self.assertGreaterEqual(time.monotonic() - started, queue_service.HEADER_SECONDS)

    def test_sends_more_than_a_client_reads(self):
        with self.serve("long-answer") as service:
            body = self.exchange(service.port).partition("\r\n\r\n")[2]
        self.assertGreater(len(body), 4095)

    def test_answers_what_is_no_http(self):
        with self.serve("garbage") as service:
            self.assertEqual(b"\xff\0garbage", self.exchange_bytes(service.port))

    def test_sends_headers_without_an_end_until_the_client_leaves(self):
        with self.serve("endless-headers") as service:
            with self.connect(service.port) as channel:
                channel.sendall(GOOD.encode())
                received = b""
                while len(received) < 2_500:
                    received += channel.recv(65536)
            self.assertTrue(service.wait_for(lambda seen: seen.failures))
        self.assertTrue(received.startswith(b"HTTP/1.1 200 OK\r\nX-More: mmm"))
        self.assertNotIn(b"\r\n\r\n", received)

    def test_sends_less_of_its_body_than_it_announced(self):
        with self.serve("cut-answer") as service:
            head, _, body = self.exchange(service.port).partition("\r\n\r\n")
        self.assertIn("\r\nContent-Length: 47\r\n", head)
        self.assertEqual(37, len(body))

    def test_certificates(self):
        for kind, expected in (("expired", "certificate has expired"),
                               ("wrong-name", "IP address mismatch"),
                               ("untrusted-root", "self-signed certificate in certificate chain|unable to get")):
            with self.subTest(kind), self.serve(certificate=kind) as service:
                with self.assertRaisesRegex(ssl.SSLCertVerificationError, expected):
                    self.exchange(service.port)

    def test_request_that_is_cut_short_is_no_message(self):
        with self.serve() as service:
            with self.connect(service.port) as channel:
                channel.sendall(GOOD[:-1].encode())
            self.assertTrue(service.wait_for(lambda seen: seen.failures))
            self.assertEqual([f"the client left after {len(GOOD) - 1} bytes"], service.seen.failures)
            self.assertEqual([], service.seen.messages)


class CommandLine(ServiceTestCase):
    def test_prints_each_message_readably_and_captures_it(self):
        capture = self.folder / "capture"
        with subprocess.Popen([ROOT / "tools" / "queue-service", "--port", "0", "--folder", self.folder, "--capture",
                               capture], stdout=subprocess.PIPE, text=True) as service:
            started = service.stdout.readline()
            port = int(re.fullmatch(rf"Listening on {ADDRESS}:(\d+); root certificate: (.*)\n", started)[1])
            self.exchange(port)
            self.exchange(port, GOOD.replace("Bearer tok", "Basic tok"))
            service.terminate()
            output = service.stdout.read()
        self.assertEqual(0, service.returncode)
        first, second = output.split("\nA message to the queue ")[1:]
        lines = first.splitlines()
        self.assertEqual("sys_info_base of the project P%20%e9", lines[0])
        self.assertEqual("    token                tok", lines[2])
        self.assertIn("    pc_modelname         Model \"7\"", lines)
        self.assertNotIn("WRONG", first)
        self.assertIn("    WRONG: the header Authorization is 'Basic tok'\n", second)
        self.assertEqual((GOOD + GOOD.replace("Bearer tok", "Basic tok")).encode(), capture.read_bytes())

    def test_port_in_use_is_reported(self):
        with socket.create_server((ADDRESS, 0)) as other:
            port = other.getsockname()[1]
            done = subprocess.run([ROOT / "tools" / "queue-service", "--port", str(port), "--folder", self.folder],
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=60)
        self.assertEqual(1, done.returncode)
        self.assertTrue(done.stderr.startswith(f"queue-service: cannot listen on {ADDRESS}:{port}: "), done.stderr)


if __name__ == "__main__":
    unittest.main()
