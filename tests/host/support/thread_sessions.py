"""Sessions of several threads over all exports. Every call with a text marks it with its thread and number."""

import random
from typing import Iterator

from .session_case import call
from .tasks import PAIRS, completed, initiated

HOME = {"screenName": "Home"}


def first_call(thread: int) -> dict:
    """Its line shows whose thread it is."""
    return call("ScreenDisplayed", screenName=f"t{thread}")


def round_of(thread: int, number: int, folder: str) -> Iterator[list[dict]]:
    """All exports, most of them once. The calls of a group keep their order."""
    def mark(what: int) -> str:
        return f"t{thread}n{number}x{what}"

    count = 1_000_000 * thread + number
    yield [call("ScreenDisplayed", screenName=mark(0) + "z" * 1500)]
    for what, export in enumerate(("ButtonClicked", "TileClicked", "HyperlinkClicked"), 1):
        yield [call(export, **HOME, controlName=mark(what))]
    yield [call("CheckboxChanged", isChecked=1, **HOME, controlName=mark(4))]
    for what, export in enumerate(("AdDisplayed", "AdClicked", "AdClosed"), 5):
        yield [call(export, adType=3, product=mark(what), name="", variant="b", **HOME, controlName="ok")]
    yield [call("UrlLaunchedEx", url=f"https://{mark(8)}", localContext={"mark": mark(8)}, globalContext=mark(8))]
    for what, export, name in ((9, "FormSubmitted", "formName"), (10, "ReportGenerated", "reportName")):
        yield [call(export, orgName="org", codeName="code", version="1.0", details={"mark": mark(what)},
                    globalContext=mark(what), **{name: "name"})]
    for pair in PAIRS:
        handle = pair.name + str(thread)
        yield [initiated(pair, handle, localContext={"mark": mark(11)}, globalContext=mark(11)),
               completed(pair, handle, "error_" + mark(11))]
    yield [call("TrackDiscoveredPrintersEx", discoveredDeviceList=[{"dev_biid": "unknown", "mark": mark(12)}])]
    yield [call("GetBiid", deviceUuid=mark(13))]
    yield [call("GetBiid_Internal", deviceUuid=mark(14))]
    yield [call("ToString", enumValue=number % 9)]
    yield [call("ToString_Internal", enumValue=thread % 9)]
    yield [call("SetGlobalContextEx", globalContext=mark(15))]
    yield [call("SetLocalSubfolderPathEx", subpath=f"{folder}\\{thread % 2}")]
    for export in ("TrackPrintQueueInfoEx", "TrackSystemInformationEx", "Pause", "Resume", "GetUserOptInEx"):
        yield [call(export)]
    for export in ("FlushEx", "ShutdownEx"):
        yield [call(export, timeoutMsec=count)]
    yield [call("StartupEx", appName="App " + mark(16), whyType=4, howType=7, trackSystemInfo=True,
                trackPrintQueueInfo=False)]
    yield [call("SetUserOptInEx", userHasOptedIn=number % 2 == 0)]
    # Refused, because of its space.
    yield [call("ButtonClicked", **HOME, controlName=f"a {mark(17)}")]


def shuffled(groups: list[list[dict]], chance: random.Random) -> list[dict]:
    placed = []
    for group in groups:
        placed += zip(sorted(chance.random() for _ in group), group)
    return [step for _, step in sorted(placed, key=lambda entry: entry[0])]


def thread_calls(thread: int, rounds: int, folder: str) -> list[dict]:
    """In an order of the thread's own, which is the same in every run."""
    chance = random.Random(thread)
    return [first_call(thread), *(step for number in range(rounds)
                                  for step in shuffled(list(round_of(thread, number, folder)), chance))]


def process_calls(process: int, threads: int, rounds: int) -> list[list[dict]]:
    """The main thread's calls, which come before the others, and then each thread's. Processes share no settings."""
    first = 100 * process
    folder = f"Process{process}"
    return [[first_call(first), call("SetLocalSubfolderPathEx", subpath=folder)],
            *(thread_calls(first + at, rounds, folder) for at in range(1, threads + 1))]


def session_steps(calls: list[list[dict]]) -> list[dict]:
    """The session of these threads."""
    return [*calls[0], {"threads": calls[1:]}]
