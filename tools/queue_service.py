"""A stand-in of the queue service: HTTPS on this machine, strict, and able to misbehave."""

import contextlib
import itertools
import json
import socket
import ssl
import struct
import threading
import time
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable, Optional

import certificates
import queue_message
from queue_message import Message

MISBEHAVIOURS = ("none", "status-401", "status-500", "redirect", "never-answer", "no-handshake", "late-handshake",
                 "reset", "slow-headers", "long-answer", "garbage", "endless-headers", "cut-answer")
STATUS_TEXTS = {200: "OK", 302: "Found", 400: "Bad Request", 401: "Unauthorized", 500: "Internal Server Error"}
LONG_ANSWER = "0123456789abcdef" * 512
GARBAGE = b"\xff\0garbage"
"""No HTTP."""
ENDLESS_HEADER = b"X-More: " + b"m" * 1000 + b"\r\n"
CUT_BYTES = 10
"""How many bytes of its body a cut answer lacks."""
HEADER_SECONDS = 6.0
"""How long slow headers take: twice the time that a caller is held."""
HANDSHAKE_SECONDS = 5.0
"""How long a late handshake lets the client wait: longer than a caller is held."""


@dataclass
class Behaviour:
    misbehaviour: str = "none"
    """One of MISBEHAVIOURS."""
    certificate: str = "valid"
    """One of certificates.KINDS."""
    redirect_to: str = ""
    """The target of "redirect"."""
    answers: tuple[bytes, ...] = ()
    """What the first requests are answered with, byte for byte."""
    plain: bool = False
    """Without TLS."""
    not_before: Callable[[], bool] = lambda: True
    """A late handshake, and the end of slow headers, wait for this too."""


@dataclass
class Seen:
    """What the service saw, in order."""

    connections: list[str] = field(default_factory=list)
    """Where they came from; also those that came to nothing."""
    failures: list[str] = field(default_factory=list)
    """Connections that ended before there was a whole request."""
    messages: list[Message] = field(default_factory=list)


class QueueService:
    """Serves from entry to exit of a with statement. Its folder keeps the authority for root.der."""

    def __init__(self, folder: Path, address: str = "127.0.0.1", port: int = 443,
                 behaviour: Optional[Behaviour] = None, on_message: Callable[[Message], None] = lambda message: None,
                 judge: Callable[[bytes], Message] = queue_message.read_message):
        self.seen = Seen()
        self._judge = judge
        self.behaviour = behaviour or Behaviour()
        self._on_message = on_message
        self._changed = threading.Condition()
        self._ending = threading.Event()
        self._open: set[socket.socket] = set()
        self.root = certificates.make_root(folder)
        self._context = _server_context(folder, self.behaviour.certificate, address)
        self._listener = socket.create_server((address, port))
        self.port = self._listener.getsockname()[1]

    def __enter__(self) -> "QueueService":
        threading.Thread(target=self._accept, daemon=True).start()
        return self

    def __exit__(self, *_) -> None:
        self._ending.set()
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        with self._changed:
            still_open = list(self._open)
        for connection in still_open:
            _interrupt(connection)

    def wait_for(self, condition: Callable[[Seen], bool], seconds: float = 20) -> bool:
        """Whether what was seen fulfils the condition in time."""
        with self._changed:
            return self._changed.wait_for(lambda: condition(self.seen), seconds)

    def _note(self, kind: list, what) -> None:
        with self._changed:
            kind.append(what)
            self._changed.notify_all()

    def _accept(self) -> None:
        while not self._ending.is_set():
            try:
                connection, peer = self._listener.accept()
            except OSError:
                return
            self._note(self.seen.connections, peer[0])
            threading.Thread(target=self._serve, args=(connection,), daemon=True).start()

    def _serve(self, connection: socket.socket) -> None:
        self._hold(connection)
        try:
            self._converse(connection)
        except (OSError, EOFError) as error:
            self._note(self.seen.failures, str(error))
        finally:
            with self._changed:
                self._open.discard(connection)
            connection.close()

    def _hold(self, connection: socket.socket) -> None:
        with self._changed:
            self._open.add(connection)

    def _converse(self, connection: socket.socket) -> None:
        if self.behaviour.misbehaviour == "reset":
            _abort(connection)
            return
        if self.behaviour.plain:
            self._take_request(connection)
            return
        if self.behaviour.misbehaviour == "no-handshake":
            self._ending.wait()
            return
        if self.behaviour.misbehaviour == "late-handshake" and not self._late(HANDSHAKE_SECONDS):
            return
        with self._context.wrap_socket(connection, server_side=True) as channel:
            self._hold(channel)
            try:
                self._take_request(channel)
            finally:
                with self._changed:
                    self._open.discard(channel)

    def _take_request(self, channel: socket.socket) -> None:
        self.take(channel, _receive(channel))

    def take(self, channel: socket.socket, raw: bytes) -> None:
        """What becomes of a request. A service with pages of its own overrides it."""
        message = self._judge(raw)
        self._note(self.seen.messages, message)
        self._on_message(message)
        self._answer(channel, message)

    def _answer(self, channel: socket.socket, message: Message) -> None:
        misbehaviour = self.behaviour.misbehaviour
        taken = len(self.seen.messages)
        if taken <= len(self.behaviour.answers):
            channel.sendall(self.behaviour.answers[taken - 1])
        elif misbehaviour == "never-answer":
            self._ending.wait()
        elif misbehaviour == "redirect":
            channel.sendall(_response(302, "", f"Location: {self.behaviour.redirect_to}\r\n"))
        elif misbehaviour == "long-answer":
            channel.sendall(_response(200, LONG_ANSWER))
        elif misbehaviour == "garbage":
            channel.sendall(GARBAGE)
        elif misbehaviour == "endless-headers":
            _send_headers_without_end(channel)
        elif misbehaviour == "cut-answer":
            channel.sendall(_usual_response(message)[:-CUT_BYTES])
        elif misbehaviour == "slow-headers":
            self._send_slowly(channel, _usual_response(message))
        elif misbehaviour.startswith("status-"):
            status = int(misbehaviour.removeprefix("status-"))
            channel.sendall(_response(status, json.dumps({"msg": STATUS_TEXTS[status]})))
        else:
            channel.sendall(_usual_response(message))

    def _send_slowly(self, channel: socket.socket, response: bytes) -> None:
        head, _, body = response.partition(b"\r\n\r\n")
        started = time.monotonic()
        for at, byte in enumerate(head):
            channel.sendall(bytes([byte]))
            if self._ending.wait(max(0.0, started + HEADER_SECONDS * (at + 1) / len(head) - time.monotonic())):
                return
        if self._late(0):
            channel.sendall(b"\r\n\r\n" + body)

    def _late(self, seconds: float) -> bool:
        """Waits. False: the service ends."""
        ending = self._ending.wait(seconds)
        while not ending and not self.behaviour.not_before():
            ending = self._ending.wait(0.05)
        return not ending


def _server_context(folder: Path, kind: str, address: str) -> ssl.SSLContext:
    made = certificates.make_server_certificate(folder, kind, address)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(made.chain, made.key)
    return context


def _receive(channel: socket.socket) -> bytes:
    """One request. Raises EOFError if it is cut short."""
    raw = b""
    while b"\r\n\r\n" not in raw:
        raw += _some_bytes(channel, raw)
    head_length = raw.index(b"\r\n\r\n") + 4
    whole = head_length + (queue_message.content_length(raw[:head_length]) or 0)
    while len(raw) < whole:
        raw += _some_bytes(channel, raw)
    return raw


def _some_bytes(channel: socket.socket, so_far: bytes) -> bytes:
    received = channel.recv(65536)
    if not received:
        raise EOFError(f"the client left after {len(so_far)} bytes")
    return received


def _usual_response(message: Message) -> bytes:
    if message.wrong:
        return _response(400, json.dumps({"wrong": message.wrong}))
    return _response(200, json.dumps({"ids": ["1"], "msg": "Messages put on queue."}))


def _response(status: int, body: str, headers: str = "") -> bytes:
    return (f"HTTP/1.1 {status} {STATUS_TEXTS[status]}\r\nContent-Type: application/json\r\n{headers}"
            f"Content-Length: {len(body)}\r\nConnection: close\r\n\r\n{body}").encode()


def _send_headers_without_end(channel: socket.socket) -> None:
    """Until the client leaves."""
    channel.sendall(b"HTTP/1.1 200 OK\r\n")
    # Slowly: a client that takes them all does not run out of memory. And none while a caller that is held no longer
    # ends its process: Wine's may not survive that with its client at work, for its exit waits for a lock of the thread
    # that is gone, and the server kills it (137).
    for pause in itertools.chain([0.25] * 4, itertools.repeat(5)):
        channel.sendall(ENDLESS_HEADER)
        channel.settimeout(pause)
        with contextlib.suppress(TimeoutError):
            if not channel.recv(1):
                raise EOFError("the client left amid the headers")


def _abort(connection: socket.socket) -> None:
    """Ends the connection with a reset."""
    _interrupt(connection)
    connection.close()


def _interrupt(connection: socket.socket) -> None:
    """Leaves the closing, which resets it, to the connection's own thread. Once it is closed, its number may be another
    file's, and a TLS connection still writes to the number when it ends."""
    with contextlib.suppress(OSError):
        connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        # A TLS socket's own function would leave its thread without a channel.
        socket.socket.shutdown(connection, socket.SHUT_RDWR)
