"""What Lumeq.dll decided about each call of a session: its error lines and what the companion library was handed."""

import re
from dataclasses import dataclass, field
from typing import Iterator

from support.log_lines import LINE, lines_of
from support.outcome import Outcome
from support.session_case import SessionTestCase, call

# The beginnings of a report, and the layers that write them.
LAYERS = {"Validation failed": "export", "Exception": "event class"}
_REPORT = re.compile(r"lumeq-host\.exe: (Validation failed|Exception) in Zuvan::Lumeq::API::(\w+): (.*)")
_ARGUMENT = re.compile(r"(?:invalid (?:\[\w+\] )?(\w+) arg|null (\w+) arg|empty (\w+))")
_MARK = re.compile(r'skipping discovered device with invalid BIID: "mark (\d+)"')


@dataclass
class Verdict:
    """Of one call."""

    refusals: list[tuple[str, str]] = field(default_factory=list)
    """The layer and the argument of each report; for an exception, its text."""
    skipped: int = 0
    """Printers of a list."""
    operations: list[dict] = field(default_factory=list)

    @property
    def is_refused(self) -> bool:
        # The library replaces a negative timeout and goes on.
        return any(refusal != ("export", "timeoutMsec") for refusal in self.refusals)


def mark(number: int) -> dict:
    """A call that leaves its number in the log and with the companion library."""
    return call("TrackDiscoveredPrintersEx", discoveredDeviceList=[
        {"dev_biid": f"mark {number}"}, {"dev_biid": "unknown", "mark": str(number)}])


def flat(steps: list[dict]) -> Iterator[dict]:
    """The steps with repetitions spelled out, and each thread after the one before it, as the linter reads them."""
    for step in steps:
        if "times" in step:
            for _ in range(step["times"]):
                yield from flat(step["calls"])
        elif "threads" in step:
            for its_steps in step["threads"]:
                yield from flat(its_steps)
        else:
            yield step


def marked(steps: list[dict]) -> list[dict]:
    """Every call after a mark with its number. While the library is not loaded, neither is made."""
    session, calls = [], 0
    for step in flat(steps):
        if "call" in step:
            session.append(mark(calls))
            calls += 1
        session.append(step)
    return session


def verdicts_of(case: SessionTestCase, steps: list[dict]) -> list[Verdict]:
    """Plays the steps on the managed road. One verdict for each call."""
    calls = sum("call" in step for step in flat(steps))
    return read_verdicts(case.play_to_end(*marked(steps), log="warning"), calls)


def read_verdicts(outcome: Outcome, calls: int) -> list[Verdict]:
    verdicts = [Verdict() for _ in range(calls)]
    current = 0
    for line in lines_of(outcome.text("Lumeq.Log.txt")):
        message = LINE.fullmatch(line)["message"]
        if found := _MARK.match(message):
            current = int(found[1])
        elif report := _REPORT.match(message):
            argument = _ARGUMENT.match(report[3])
            detail = next(filter(None, argument.groups())) if argument else report[3]
            verdicts[current].refusals.append((LAYERS[report[1]], detail))
        elif message.startswith("skipping discovered device"):
            verdicts[current].skipped += 1
    current = 0
    for operation in outcome.companion:
        if "mark" in operation.get("data", {}):
            current = int(operation["data"]["mark"])
        else:
            verdicts[current].operations.append(operation)
    return verdicts
