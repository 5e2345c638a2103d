"""The queue service for one engineer: takes messages, judges them, and shows what has come."""

import functools
import json
import socket
import threading
from datetime import datetime
from pathlib import Path
from typing import Any, Callable, NamedTuple

import queue_message
import queue_service
from queue_message import Message

NAME = "localhost"


class Taken(NamedTuple):
    time: datetime
    message: Message

    def shown(self) -> dict[str, Any]:
        message = self.message
        return {"time": self.time.isoformat(timespec="seconds"), "project": message.project, "queue": message.queue,
                "userAgent": message.agent, "token": message.token, "fields": message.fields, "wrong": message.wrong}


class LocalService(queue_service.QueueService):
    """For a with statement. `page` makes the HTML page of the messages; `report` gets each one that comes."""

    def __init__(self, folder: Path, port: int, page: Callable[[list[bytes]], str],
                 report: Callable[[Taken], None] = lambda taken: None):
        super().__init__(folder, NAME, port, on_message=self._keep,
                         judge=functools.partial(queue_message.read_message, strict=False))
        self._page = page
        self._report = report
        self._lock = threading.Lock()
        self._taken: list[Taken] = []

    def take(self, channel: socket.socket, raw: bytes) -> None:
        method, _, rest = raw.split(b"\r\n", 1)[0].decode("latin-1").partition(" ")
        path = rest.partition(" ")[0].partition("?")[0]
        answer = self._answer_to(method, path)
        if answer:
            channel.sendall(answer)
        else:
            super().take(channel, raw)

    def _answer_to(self, method: str, path: str) -> bytes:
        """Empty for a request that is a message, or should have been one."""
        with self._lock:
            taken = list(self._taken)
            if path == "/reset" and method in ("GET", "POST"):
                self._taken.clear()
        if method == "GET" and path == "/":
            return _response(200, "text/html; charset=utf-8", self._page([each.message.raw for each in taken]))
        if method == "GET" and path in ("/good", "/bad"):
            wanted = [each.shown() for each in taken if bool(each.message.wrong) == (path == "/bad")]
            return _json(200, wanted)
        if path == "/reset" and method in ("GET", "POST"):
            return _json(200, {"removed": len(taken)})
        if method in ("GET", "HEAD"):
            return _json(404, {"pages": ["/", "/good", "/bad", "/reset"]})
        return b""

    def _keep(self, message: Message) -> None:
        taken = Taken(datetime.now(), message)
        with self._lock:
            self._taken.append(taken)
        self._report(taken)


def _json(status: int, content: Any) -> bytes:
    return _response(status, "application/json", json.dumps(content, indent=1))


def _response(status: int, kind: str, text: str) -> bytes:
    body = text.encode("utf-8")
    words = {200: "OK", 404: "Not Found"}[status]
    return (f"HTTP/1.1 {status} {words}\r\nContent-Type: {kind}\r\nContent-Length: {len(body)}\r\n"
            "Cache-Control: no-store\r\nConnection: close\r\n\r\n").encode() + body
