"""What the queue service takes: one request, checked to the letter."""

import base64
import json
import re
from dataclasses import dataclass, field
from typing import Optional

REQUEST_LINE = re.compile(r"POST /projects/(?P<project>(?:[A-Za-z0-9._~-]|%[0-9a-f]{2})+)"
                          r"/queues/(?P<queue>(?:[A-Za-z0-9._~-]|%[0-9a-f]{2})+)/messages HTTP/1\.1")
BODY = re.compile(r'\{"messages":\[\{"body":"=\?media_type:application/json\.b64\?=(?P<base64>[^"]*)"\}\]\}')

# In the order in which Wine's client sends them: what it adds comes first, then the library's own five, each with
# a space after the colon even where the library wrote none.
HEADERS = (
    ("Host", r"[^:]+"),
    ("Pragma", r"no-cache"),
    ("Cache-Control", r"no-cache"),
    ("Content-Type", r"application/json"),
    ("Accept", r"application/json"),
    ("Authorization", r"Bearer(?: (?P<token>.+))?"),
    ("User-Agent", r"(?P<agent>.+/\d+\.\d+\.\d+\.\d+)"),
    ("Content-Length", r"\d+"),
)

ADDED_BY_THE_CLIENT = ("Host", "Pragma", "Cache-Control")

UUID = r"[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}"
FLAG = r"true|false|unknown"
# The library replaces everything but printable ASCII by a space.
ANYTHING = r"[ -~]*"
FIELDS = {
    "schema": r"sys_info_base/1\.1\.0",
    "pc_touchenabled": FLAG,
    "pc_battery": FLAG,
    "pc_architecture": r"x64",
    "os_name": r"unknown|\S([ -~]*\S)?|",
    "os_version": r"unknown|\d+(\.\d+)+",
    "os_architecture": r"bit_64",
    "os_screenresolution": r"\d+x\d+",
    "os_language": r"unknown|([a-z]{2,3}|unknown)-([A-Z]{2}|unknown)|[A-Z]{2}",
    "os_country": r"unknown|[A-Z]{2}",
    "pc_manufacturer": ANYTHING,
    "pc_modelname": ANYTHING,
    "pc_category": r"unknown|Computer(\.\w+)*",
    "pc_sku": ANYTHING,
    "app_id": r"[ -~]+/\d+\.\d+\.\d+\.\d+",
    "sys_uuid": r"[^a-z]*",
    "app_deployed_id": ANYTHING,
    "app_deployed_uuid": UUID,
    "app_session_uuid": UUID,
}


@dataclass
class Message:
    raw: bytes
    """The request as it came, from its first byte to its last."""
    project: str = ""
    queue: str = ""
    token: str = ""
    agent: str = ""
    text: str = ""
    """What the body held, decoded."""
    fields: dict[str, str] = field(default_factory=dict)
    wrong: list[str] = field(default_factory=list)
    """Everything that is not as it must be; empty for a good message."""


def read_message(raw: bytes, strict: bool = True) -> Message:
    """Unless it is strict, clients other than Wine's may add headers and choose their order."""
    message = Message(raw)
    head, end, body = raw.partition(b"\r\n\r\n")
    if not end:
        message.wrong.append("the headers have no end")
    request_line, *headers = head.decode("latin-1").split("\r\n")
    _check_request_line(message, request_line)
    _check_headers(message, headers, len(body), strict)
    _check_body(message, body)
    return message


def content_length(head: bytes) -> Optional[int]:
    found = re.search(rb"\r\nContent-Length: *(\d+)\r\n", head, re.IGNORECASE)
    return int(found[1]) if found else None


def _check_request_line(message: Message, line: str) -> None:
    match = REQUEST_LINE.fullmatch(line)
    if match:
        message.project, message.queue = match["project"], match["queue"]
    else:
        message.wrong.append(f"the request line is {line!r}")


def _check_headers(message: Message, lines: list[str], body_length: int, strict: bool) -> None:
    names = [line.partition(":")[0] for line in lines]
    expected = [name for name, _ in HEADERS]
    if strict and names != expected:
        message.wrong.append(f"the headers are {', '.join(names)} and not {', '.join(expected)}")
    values = dict(line.split(": ", 1) for line in lines if ": " in line)
    for name, pattern in HEADERS:
        if not strict and name in ADDED_BY_THE_CLIENT:
            continue
        match = re.fullmatch(pattern, values.get(name, ""))
        if not match:
            message.wrong.append(f"the header {name} is {values.get(name)!r}")
            continue
        if name == "Authorization":
            message.token = match["token"] or ""
        elif name == "User-Agent":
            message.agent = match["agent"]
    if values.get("Content-Length") != str(body_length):
        message.wrong.append(f"Content-Length is {values.get('Content-Length')} for {body_length} bytes")


def _check_body(message: Message, body: bytes) -> None:
    match = BODY.fullmatch(body.decode("latin-1"))
    if not match:
        message.wrong.append(f"the envelope is {body!r}")
        return
    try:
        message.text = base64.b64decode(match["base64"], validate=True).decode("ascii")
    except ValueError as error:
        message.wrong.append(f"the message is no Base64 of printable text: {error}")
        return
    if base64.b64encode(message.text.encode()).decode() != match["base64"]:
        message.wrong.append("the Base64 has bits to spare")
    _check_text(message)


def _check_text(message: Message) -> None:
    try:
        content = json.loads(message.text, object_pairs_hook=_unique)
    except ValueError as error:
        message.wrong.append(f"the message is no JSON: {error}")
        return
    if not isinstance(content, dict):
        message.wrong.append("the JSON is no object")
        return
    message.fields = content
    if message.text != "{" + ",".join(f"{_quoted(k)}:{_quoted(v)}" for k, v in message.fields.items()) + "}":
        message.wrong.append("the JSON is not a flat object of texts without spaces")
    for name in sorted(FIELDS.keys() ^ message.fields.keys()):
        message.wrong.append(f"the field {name} is {'missing' if name in FIELDS else 'not known'}")
    for name, pattern in FIELDS.items():
        value = message.fields.get(name)
        if value is not None and not re.fullmatch(pattern, str(value)):
            message.wrong.append(f"the field {name} is {value!r}")
    # In the message a space replaces what is not ASCII; in the header the name is unchanged.
    if message.agent.isascii() and message.fields.get("app_id") != message.agent:
        message.wrong.append(f"app_id is not the User-Agent {message.agent!r}")


def _quoted(value) -> str:
    return '"' + str(value).replace("\\", "\\\\").replace('"', '\\"') + '"'


def _unique(pairs: list[tuple[str, str]]) -> dict[str, str]:
    if len({name for name, _ in pairs}) != len(pairs):
        raise ValueError("a field comes twice")
    return dict(pairs)
