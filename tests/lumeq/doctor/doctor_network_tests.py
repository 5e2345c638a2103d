"""What lumeq doctor finds on the way to the server, with real servers and proxies on this machine."""

import contextlib
import socket
import struct
import threading
import unittest

from doctor_case import DoctorTestCase, ServedTestCase

CONNECTIONS = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings\Connections"
PROXY, SCRIPT = 3, 5
"""Flags of the settings: besides direct connections, a proxy or a script."""
BASIC = {"LUMEQ_WINE_OVERRIDES": "mscoree=d"}
"""On the basic road the library uses the network itself."""
NETWORK = ("--only", "network")


class Proxy:
    """Answers each request for a connection with `answer`; with none, opens the connection."""

    def __init__(self, answer: bytes = b""):
        self.requests: list[bytes] = []
        self._answer = answer
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.port = self._listener.getsockname()[1]

    def __enter__(self) -> "Proxy":
        threading.Thread(target=self._accept, daemon=True).start()
        return self

    def __exit__(self, *_) -> None:
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()

    def _accept(self) -> None:
        with contextlib.suppress(OSError):
            while True:
                client, _ = self._listener.accept()
                threading.Thread(target=self._serve, args=(client,), daemon=True).start()

    def _serve(self, client: socket.socket) -> None:
        with client, contextlib.suppress(OSError):
            self.requests.append(client.recv(65536))
            if self._answer:
                client.sendall(self._answer)
                return
            with socket.create_connection((ServedTestCase.SERVER, 443)) as server:
                client.sendall(b"HTTP/1.1 200 Connection established\r\n\r\n")
                back = threading.Thread(target=self._pass_on, args=(server, client), daemon=True)
                back.start()
                self._pass_on(client, server)
                back.join(5)

    @staticmethod
    def _pass_on(source: socket.socket, target: socket.socket) -> None:
        with contextlib.suppress(OSError):
            while received := source.recv(65536):
                target.sendall(received)
            target.shutdown(socket.SHUT_WR)


class Network(ServedTestCase):
    def check_network(self, expected: set[str], *arguments: str, **environment: str):
        return self.check_found(expected, *NETWORK, *arguments, **(BASIC | environment))

    def test_good_server_gets_a_handshake_and_nothing_else(self):
        with self.serve() as service:
            diagnosis = self.check_network(set())
            self.assertTrue(service.wait_for(lambda seen: seen.failures))
        self.assertEqual(["the client left after 0 bytes"], service.seen.failures)
        self.assertEqual([], service.seen.messages)
        self.assertRegex(diagnosis.details("network")[0], r"^localhost \(127\.0\.0\.1\), TLS 1\.\d$")
        self.assertRegex(diagnosis.details("network")[1],
                         r"^certificate for localhost by Lumeq development issuer, valid from \d{4}-\d\d-\d\d to ")

    def test_certificates(self):
        for certificate, finding, status in (("untrusted-root", "certificate-untrusted", 1),
                                             ("expired", "certificate-expired", 0),
                                             ("wrong-name", "certificate-name-wrong", 0)):
            with self.subTest(certificate), self.serve(certificate=certificate):
                self.assertEqual(status, self.check_network({finding}).status)

    def test_on_the_managed_road_a_bad_certificate_is_a_warning(self):
        with self.serve(certificate="untrusted-root"):
            diagnosis = self.check_found({"certificate-untrusted"}, *NETWORK)
        self.assertEqual(("warning", 0), (diagnosis.of("certificate-untrusted")["effect"], diagnosis.status))

    def test_name_without_an_address(self):
        self.write_factory(LUMServerUri="https://no.such.server.invalid")
        self.check_network({"name-unknown"})

    def test_nobody_listens(self):
        self.write_factory(LUMServerUri=f"https://{DoctorTestCase.SERVER}")
        self.assertRegex(self.check_network({"server-unreachable"}).of("server-unreachable")["detail"],
                         r"^127\.0\.0\.64: .*\(10061\)$")

    def test_servers_without_an_encrypted_connection(self):
        with self.serve(plain=True):
            self.check_network({"handshake-fails"}, "--seconds", "1")
        with self.serve(misbehaviour="no-handshake"):
            self.check_network({"handshake-fails"}, "--seconds", "0.5")

    def use_proxy(self, flags: int, servers: str = "", script: str = "") -> None:
        """Writes what Windows' own dialog for the proxy writes."""
        texts = [text.encode() for text in (servers, "", script)]
        settings = struct.pack("<III", 0x46, 1, flags) + b"".join(struct.pack("<I", len(text)) + text for text in texts)
        self.set_registry(CONNECTIONS, "DefaultConnectionSettings", settings.hex(), "REG_BINARY")

    def use_proxy_at(self, port: int) -> None:
        self.use_proxy(PROXY, f"http=127.0.0.1:1;https=127.0.0.1:{port}")

    def test_proxy_that_opens_the_connection(self):
        with self.serve() as service, Proxy() as proxy:
            self.use_proxy_at(proxy.port)
            diagnosis = self.check_network(set())
        self.assertEqual([b"CONNECT localhost:443 HTTP/1.1\r\nHost: localhost:443\r\n\r\n"], proxy.requests)
        self.assertIn(f"by the proxy 127.0.0.1:{proxy.port}", diagnosis.details("network")[0])
        self.assertEqual([], service.seen.messages)

    def test_proxy_that_refuses_or_is_not_there(self):
        with Proxy(b"HTTP/1.1 407 Proxy Authentication Required\r\n\r\n") as proxy:
            self.use_proxy_at(proxy.port)
            self.assertIn("it answers HTTP/1.1 407 Proxy Authentication Required",
                          self.check_network({"proxy-refuses"}).of("proxy-refuses")["detail"])
        self.check_network({"server-unreachable"})

    def test_proxy_by_a_script(self):
        self.use_proxy(SCRIPT, script="http://127.0.0.1:1/proxy.pac")
        with self.serve():
            self.check_network({"proxy-automatic"})


if __name__ == "__main__":
    unittest.main()
