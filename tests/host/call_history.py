"""Sessions of several threads over all exports, and the one history of calls that their log and records must tell.

Every call that takes a text is marked in it with its thread and number. Calls are serialised, so the lines of the log
stand in the order of the calls: a small model that follows them knows what each must have left.
"""

import random
import re
from dataclasses import dataclass, field
from typing import Callable, Iterator, NamedTuple, Optional

from device_tests import biid
from session_support import CRASH
from support import LogLine, call, error, parse_log, record, trace
from task_support import (PAIRS, Pair, completed, completed_line, completed_record, initiated, initiated_line,
                          initiated_record, masked)

ROADS = ("managed", "basic")
THREAD = re.compile(r"^\S+ \w+ *0x([0-9a-f]{8}) \| ", re.MULTILINE)
NO_PROJECT = LogLine("WARNING", "", "Project ID is empty. Ensure *LumeqConfig.xml is in path!")
METHODS = ("unknown", "already_on_network", "auto_wireless_connect", "ethernet", "frontpanel_setup_of_wireless",
           "later", "press_wireless_button", "usb", "usb_plus_wifi")


@dataclass
class Choice:
    """What a settings file holds; None: no such element."""

    opted_in: Optional[bool] = None
    before_pause: Optional[bool] = None


@dataclass
class Process:
    """What the calls so far have left in a process."""

    road: str
    model: Optional[str] = None
    subfolder: str = ""
    choices: dict[str, Choice] = field(default_factory=dict)
    started_opted_in: bool = False

    @property
    def choice(self) -> Choice:
        return self.choices.setdefault(self.subfolder, Choice())


class Traces(NamedTuple):
    """What one call leaves: lines of the log and operations of the companion."""

    lines: list[LogLine]
    operations: list[dict] = []


class Step(NamedTuple):
    call: dict
    follow: Callable[[Process], Traces]
    """Moves the process on and gives what the call leaves."""


def event(event_record: dict) -> dict:
    return {"operation": "PostEventInternal", "record": event_record}


def posted(step: dict, line: LogLine, make_record: Callable[[Process], dict]) -> Step:
    return Step(step, lambda process: Traces([line], [event(make_record(process))]))


def refused(step: dict, line: LogLine, detail: str) -> Step:
    return Step(step, lambda process: Traces([line, error(step["call"], detail)]))


def screen(mark: str, padding: str = "") -> Step:
    name = mark + padding
    return posted(call("ScreenDisplayed", screenName=name),
                  trace("ScreenDisplayed", f'flow: (null), screenPath: (null), screenName: "{name}", mode: (null), '
                        "localContext: (null), globalContext: (null)"),
                  lambda process: record("app", "displayed", "screen", f"/{name}", model=process.model))


def click_line(export: str, mark: str, name: str = "controName") -> LogLine:
    return trace(export, f'flow: (null), screenPath: (null), screenName: "Home", mode: (null), {name}: "{mark}", '
                 "localContext: (null), globalContext: (null)")


def click(export: str, word: str, mark: str, sign: str = "#") -> Step:
    return posted(call(export, screenName="Home", controlName=mark), click_line(export, mark),
                  lambda process: record("user", "clicked", word, f"/Home{sign}{mark}", model=process.model))


def checkbox(mark: str) -> Step:
    line = click_line("CheckboxChanged", mark, "controlName")
    return posted(call("CheckboxChanged", isChecked=1, screenName="Home", controlName=mark),
                  line._replace(message="isChecked: 1, " + line.message),
                  lambda process: record("user", "checked", "checkbox", f"/Home#{mark}", model=process.model))


def ad(export: str, actor: str, action: str, mark: str) -> Step:
    line = click_line(export, "ok", "controlName")
    details = {"schema": "generic/1.0.0", "moniker": "x-dvrn_ad_basic/1.0", "campaign_type": "tile",
               "campaign_product": mark, "campaign_name": "unknown", "campaign_variant": "b"}
    return posted(call(export, adType=3, product=mark, name="", variant="b", screenName="Home", controlName="ok"),
                  line._replace(message=f'adType: tile, product: "{mark}", name: "", variant: "b", ' + line.message),
                  lambda process: record(actor, action, "ad", "/Home#ok", details, model=process.model))


def url(mark: str) -> Step:
    return posted(call("UrlLaunchedEx", url=f"https://{mark}", localContext={"mark": mark}, globalContext=mark),
                  trace("UrlLaunchedEx", f'url: "https://{mark}", localContext: [1 item(s)], globalContext: "{mark}"'),
                  lambda process: record("app", "launched", "url", f"https://{mark}", local={"mark": mark}, model=mark))


def document(export: str, action: str, word: str, mark: str) -> Step:
    arguments = {"orgName": "org", "codeName": "code", f"{word}Name": "name", "version": "1.0",
                 "details": {"mark": mark}}
    return posted(call(export, **arguments, globalContext=mark),
                  trace(export, f'orgName: "org", codeName: "code", {word}Name: "name", version: "1.0", '
                        f'details: [1 item(s)], localContext: (null), globalContext: "{mark}"'),
                  lambda process: record("user" if word == "form" else "app", action, word, f"{word}_generic", {
                      "schema": f"app_event_{word}_generic/1.0.0", "moniker": f"x-org_code_{word}_name/1.0",
                      "mark": mark}, model=mark))


def task(pair: Pair, mark: str, handle: str) -> tuple[Step, Step]:
    return (posted(initiated(pair, handle, localContext={"mark": mark}, globalContext=mark),
                   initiated_line(pair, "[1 item(s)]", f'"{mark}"'),
                   lambda _: initiated_record(pair, local={"mark": mark}, model=mark)),
            posted(completed(pair, handle, "error_" + mark), completed_line(pair, result="error_" + mark),
                   lambda _: completed_record(pair, "error_" + mark, local={"mark": mark}, model=mark)))


def printers(mark: str) -> Step:
    device = {"dev_biid": "unknown", "mark": mark}
    return Step(call("TrackDiscoveredPrintersEx", discoveredDeviceList=[device]),
                lambda _: Traces([trace("TrackDiscoveredPrintersEx", "discoveredDeviceList: [1 item(s)]")],
                                 [{"operation": "PostDataInternal", "dataType": "sys_printer_discoverylist",
                                   "data": device}]))


def identifier(export: str, mark: str) -> Step:
    # The _Internal forms log under the name of the export that does their work.
    lines = [trace("GetBiid", f'deviceUuid: "{mark}"'), trace("GetBiid", f'...returns biid: "{biid(mark.encode())}"')]
    return Step(call(export, deviceUuid=mark), lambda _: Traces(lines))


def text_form(export: str, value: int) -> Step:
    lines = [trace("ToString", f"enumValue: {METHODS[value]} ({value})"),
             trace("ToString", f'...returns textValue: "{METHODS[value]}"')]
    return Step(call(export, enumValue=value), lambda _: Traces(lines))


def global_context(mark: str) -> Step:
    def follow(process: Process) -> Traces:
        process.model = mark
        return Traces([trace("SetGlobalContextEx", f'globalContext: "{mark}"')])

    return Step(call("SetGlobalContextEx", globalContext=mark), follow)


def subfolder(path: str) -> Step:
    def follow(process: Process) -> Traces:
        process.subfolder = path
        return Traces([trace("SetLocalSubfolderPathEx", f'subpath: "{path}"')],
                      [{"operation": "LocalSettingsSubfolderInternal", "path": path}])

    return Step(call("SetLocalSubfolderPathEx", subpath=path), follow)


def plain(export: str) -> Step:
    return Step(call(export), lambda _: Traces([trace(export)],
                                               [{"operation": export.removesuffix("Ex") + "Internal"}]))


def flush(number: int) -> Step:
    return Step(call("FlushEx", timeoutMsec=number), lambda _: Traces(
        [trace("FlushEx", f"timeoutMsec: {number}")], [{"operation": "FlushInternal", "timeoutMsec": number}]))


def set_opt_in(process: Process, opted_in: bool) -> dict:
    process.choice.opted_in = opted_in
    return {"operation": "SetUserOptInInternal", "userHasOptedIn": opted_in}


def end_pause(process: Process) -> list[dict]:
    operations = [set_opt_in(process, True)] if process.choice.before_pause else []
    process.choice.before_pause = None
    return operations


def choose(opted_in: bool) -> Step:
    def follow(process: Process) -> Traces:
        if process.choice.before_pause is not None:
            process.choice.before_pause = opted_in
        return Traces([trace("SetUserOptInEx", f"userHasOptedIn: {opted_in:d}")], [set_opt_in(process, opted_in)])

    return Step(call("SetUserOptInEx", userHasOptedIn=opted_in), follow)


def ask() -> Step:
    def follow(process: Process) -> Traces:
        answer = "true" if process.choice.opted_in else "false"
        return Traces([trace("GetUserOptInEx"), trace("GetUserOptInEx", f"...returns: {answer}")],
                      [{"operation": "GetUserOptInInternal"}])

    return Step(call("GetUserOptInEx"), follow)


def pause() -> Step:
    def follow(process: Process) -> Traces:
        process.choice.before_pause = bool(process.choice.opted_in)
        return Traces([trace("Pause")], [{"operation": "SetLocalValueInternal", "key": "OptinBeforePause",
                                          "value": str(process.choice.before_pause)}, set_opt_in(process, False)])

    return Step(call("Pause"), follow)


def resume() -> Step:
    return Step(call("Resume"), lambda process: Traces([trace("Resume")], end_pause(process)))


def shutdown(number: int) -> Step:
    return Step(call("ShutdownEx", timeoutMsec=number), lambda process: Traces(
        [trace("ShutdownEx", f"timeoutMsec: {number}")],
        [*end_pause(process), {"operation": "ShutdownInternal", "timeoutMsec": number}]))


def start(mark: str) -> Step:
    name = "App " + mark

    def follow(process: Process) -> Traces:
        lines = [trace("StartupEx", f'appName: "{name}", whyType: start_app, howType: smv_link, trackSystemInfo: 1, '
                       "trackPrintQueueInfo: 0")]
        operations = []
        if process.choice.before_pause is not None:
            lines.append(CRASH)
            operations = end_pause(process)
        # The basic road would send its message now, had it a project to send it for.
        if process.road == "basic" and process.choice.opted_in and not process.started_opted_in:
            lines.append(NO_PROJECT)
            process.started_opted_in = True
        return Traces(lines, [*operations, {
            "operation": "StartupInternal", "appName": name, "howType": 6, "whyType": 3, "trackSystemInfo": True,
            "trackPrintQueueInfo": False}])

    return Step(call("StartupEx", appName=name, whyType=4, howType=7, trackSystemInfo=True, trackPrintQueueInfo=False),
                follow)


def round_of(thread: int, number: int, folder: str) -> Iterator[tuple[Step, ...]]:
    """All exports, most of them once, each marked; what belongs together in order stands together."""
    def mark(what: int) -> str:
        return f"t{thread}n{number}x{what}"

    count = 1_000_000 * thread + number
    yield (screen(mark(0), "z" * 1500),)
    yield (click("ButtonClicked", "button", mark(1)),)
    yield (click("TileClicked", "tile", mark(2)),)
    yield (click("HyperlinkClicked", "hyperlink", mark(3), "#url_"),)
    yield (checkbox(mark(4)),)
    yield (ad("AdDisplayed", "app", "displayed", mark(5)),)
    yield (ad("AdClicked", "user", "clicked", mark(6)),)
    yield (ad("AdClosed", "user", "closed", mark(7)),)
    yield (url(mark(8)),)
    yield (document("FormSubmitted", "submitted", "form", mark(9)),)
    yield (document("ReportGenerated", "generated", "report", mark(10)),)
    for pair in PAIRS:
        yield task(pair, mark(11), pair.name + str(thread))
    yield (printers(mark(12)),)
    yield (identifier("GetBiid", mark(13)),)
    yield (identifier("GetBiid_Internal", mark(14)),)
    yield (text_form("ToString", number % 9),)
    yield (text_form("ToString_Internal", thread % 9),)
    yield (global_context(mark(15)),)
    yield (subfolder(f"{folder}\\{thread % 2}"),)
    yield (plain("TrackPrintQueueInfoEx"),)
    yield (plain("TrackSystemInformationEx"),)
    yield (flush(count),)
    yield (shutdown(count),)
    yield (start(mark(16)),)
    yield (pause(),)
    yield (resume(),)
    yield (choose(number % 2 == 0),)
    yield (ask(),)
    bad = f"a {mark(17)}"
    yield (refused(call("ButtonClicked", screenName="Home", controlName=bad), click_line("ButtonClicked", bad),
                   f'invalid [REQUIRED] controlName arg: "{bad}"'),)


def shuffled(groups: list[tuple[Step, ...]], chance: random.Random) -> list[Step]:
    """Each group keeps its order."""
    placed = []
    for group in groups:
        placed += zip(sorted(chance.random() for _ in group), group)
    return [step for _, step in sorted(placed, key=lambda entry: entry[0])]


def thread_steps(thread: int, rounds: int, folder: str) -> list[Step]:
    """In an order of the thread's own, the same in every run. The first call tells whose thread it is."""
    chance = random.Random(thread)
    return [screen(f"t{thread}"), *(step for number in range(rounds)
                                    for step in shuffled(list(round_of(thread, number, folder)), chance))]


def process_steps(process: int, threads: int, rounds: int) -> list[list[Step]]:
    """Of the main thread, which comes before the others, and of each other. Processes share no settings."""
    first = 100 * process
    folder = f"Process{process}"
    return [[screen(f"t{first}"), subfolder(folder)],
            *(thread_steps(first + at, rounds, folder) for at in range(1, threads + 1))]


class BrokenHistory(AssertionError):
    """What was left is no history of these calls."""


def threaded_lines(log: str) -> list[tuple[str, LogLine]]:
    """Every line of the log with the number of the thread that it tells."""
    return list(zip(THREAD.findall(log), masked(parse_log(log)), strict=True))


class History:
    """Follows the lines of one process, in the order of the log."""

    def __init__(self, road: str, threads: list[list[Step]]):
        self.operations: list[dict] = []
        """What the companion must have been asked for, in order."""
        self._process = Process(road)
        self._first_lines = {steps[0].follow(Process(road)).lines[0]: at for at, steps in enumerate(threads)}
        self._to_come = [iter(steps) for steps in threads]
        self._threads: dict[str, int] = {}
        self._call_to_come: list[LogLine] = []
        """What the call in progress has yet to log."""
        self._caller = ""

    def owns(self, thread: str, line: LogLine) -> bool:
        if line in self._first_lines:
            self._threads.setdefault(thread, self._first_lines[line])
        return thread in self._threads

    def follow(self, thread: str, line: LogLine) -> None:
        if not self._call_to_come:
            self._begin_call(thread, line)
        if thread != self._caller or line != self._call_to_come[0]:
            raise BrokenHistory(f"expected {self._call_to_come[0]} of thread {self._caller}, got {line} of {thread}")
        del self._call_to_come[0]

    def _begin_call(self, thread: str, line: LogLine) -> None:
        step = next(self._to_come[self._threads[thread]], None)
        if step is None:
            raise BrokenHistory(f"no call is left in thread {thread} for {line}")
        traces = step.follow(self._process)
        self._caller, self._call_to_come = thread, list(traces.lines)
        if self._process.road == "managed":
            self.operations += traces.operations

    def check_end(self) -> None:
        left = [step.call for steps in self._to_come for step in steps]
        if left or self._call_to_come:
            raise BrokenHistory(f"lost: {self._call_to_come} and the lines of {len(left)} calls: {left[:3]}")


def follow_log(log: str, histories: list[History]) -> int:
    """Accounts for every line of a log that these processes shared; gives how many lines there were."""
    lines = [(thread, line) for thread, line in threaded_lines(log) if not line.message.startswith("Logger: ")]
    for thread, line in lines:
        owner = next((history for history in histories if history.owns(thread, line)), None)
        if owner is None:
            raise BrokenHistory(f"nobody's line: {thread} {line}")
        owner.follow(thread, line)
    for history in histories:
        history.check_end()
    return len(lines)
