"""The lines that posting logs, and how long it holds its caller."""

import base64
import re

from .basic_road_case import PATH, PREFIX, PROJECT, START, BasicRoadTestCase
from .standstill import Standstill
from .log_lines import LogLine, lines_of
from .outcome import Outcome

LONGEST_HOLD = 3.9
"""Seconds: three, and some of a busy machine's."""
GOES_ON = "Executing Basic Functionality"
"""The first line of a caller that waits no longer."""
TIME = re.compile(r"T(\d\d):(\d\d):(\d\d\.\d{3})Z ")


def line(severity: str, message: str) -> LogLine:
    return LogLine(severity, "", message)


def failed_send(code: str) -> list[LogLine]:
    return [line("WARNING", f"HttpSendRequest failed {code}"), line("WARNING", f"HTTP FAILURE {code}")]


SENT = line("DEBUG", "HttpSendRequest sent")
NO_RESPONSE = [line("DATA", " <-HTTP RESULT= (0)"), line("DEBUG", "Headers=\\r\\n")]
"""Wine's client shows the end of the headers even where there are none."""


def headers(raw: str) -> LogLine:
    """For the headers as they came, status line and empty line included."""
    return line("DEBUG", "Headers=" + raw.replace("\r\n", "\\r\\n"))


def response(status: int, text: str, length: int) -> list[LogLine]:
    return [line("DATA", f" <-HTTP RESULT={text} ({status})"),
            headers(f"HTTP/1.1 {status} {text}\r\nContent-Type: application/json\r\n"
                    f"Content-Length: {length}\r\nConnection: close\r\n\r\n")]


def answer(text: str) -> list[LogLine]:
    return [line("DEBUG", "Post took # ms"), line("DATA", f"<- {text}")]


def posting(outcome: Outcome) -> list[LogLine]:
    """The lines from the post's start on, without how long things took and without those of its caller."""
    lines = [line._replace(message=re.sub(r" took \d+ ms$", " took # ms", line.message)) for line in outcome.log]
    first = next(at for at, line in enumerate(lines) if line.message.startswith("PostMessageAndForget("))
    end = next(at for at, line in enumerate(lines[first:], first) if line.message == GOES_ON)
    later = [line for line in lines[end + 1:]
             if line.message.startswith(("Post took", "<- ", "HttpSend", " <-HTTP", "Headers=", "HTTP "))]
    return lines[first:end] + later


def held(outcome: Outcome) -> float:
    """For how many seconds the caller waited for the worker."""
    def seconds(message: str) -> float:
        text = next(line for line in outcome.text("Lumeq.Log.txt").splitlines() if line.endswith(f" | {message}"))
        hours, minutes, rest = TIME.search(text).groups()
        return (int(hours) * 60 + int(minutes)) * 60 + float(rest)

    return (seconds(GOES_ON) - seconds("PostMessageAndForget about to post")) % 86400


class PostingTestCase(BasicRoadTestCase):
    def post(self, *steps: dict, **circumstances) -> Outcome:
        """Circumstances as for run_host."""
        with Standstill() as self.standstill:
            outcome = self.run_host(START, *steps, **circumstances)
        self.assertEqual(0, outcome.status)
        return outcome

    def before_sending(self, outcome: Outcome, host: str) -> list[LogLine]:
        message = self.logged_messages(outcome)[0]
        encoded = PREFIX + base64.b64encode(message.encode()).decode()
        return [line("DEBUG", f"PostMessageAndForget({host}, Scan Studio/0.0.0.0, {PROJECT}, sys_info_base, token9)"),
                line("TRACE", f"Message={message}"),
                line("DEBUG", f"Encoded Message={encoded}"),
                line("DEBUG", "PostMessageAndForget about to post"),
                line("DATA", f"->{PATH} {message}")]

    def sending(self, outcome: Outcome, host: str) -> list[LogLine]:
        before = self.before_sending(outcome, host)
        length = len('{"messages":[{"body":""}]}') + len(before[2].message.removeprefix("Encoded Message="))
        return [*before, line("DATA", f" ->HTTP POST: {PATH} Content-Type: application/json  "
                                      "Accept: application/json  Authorization: Bearer token9  "
                                      f"User-Agent:Scan Studio/0.0.0.0  Content-Length:{length}  ")]

    def check_held(self, outcome: Outcome):
        """By a service that kept the caller as long as it lets itself be kept."""
        self.assertGreaterEqual(held(outcome), 2.98)
        self.check_let_go(outcome)

    def check_let_go(self, outcome: Outcome):
        """The last post held its caller no longer than it may, but for what the machine itself stood still."""
        self.assertLess(held(outcome) - self.standstill.in_all, LONGEST_HOLD)

    def lines_so_far(self, ending: str) -> int:
        """So many lines of the log end so by now."""
        logs = self.machine.log_folder()
        log = logs / "Lumeq.Log.txt" if logs else None
        text = log.read_text(encoding="utf-8") if log and log.exists() else ""
        return sum(line.endswith(ending) for line in lines_of(text))

    def check_lines(self, outcome: Outcome, *expected: LogLine, host: str = ""):
        """All lines of the last post, and that it held its caller no longer than it may."""
        self.check_let_go(outcome)
        self.assertEqual([*self.sending(outcome, host or self.ADDRESS), *expected], posting(outcome))
