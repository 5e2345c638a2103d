"""Random texts for each pattern, and the calls that ask the library about them."""

import random
from dataclasses import dataclass
from typing import Any, Iterator

from session_texts import BAD_BIIDS, BAD_SUBFOLDERS, BESIDE, BIID, FORBIDDEN, ODD, SEEDS, SUBFOLDERS, UNITS
from support import call
from wide_text import session_text, wide


@dataclass
class Subject:
    """One argument of one operation."""

    export: str
    argument: str
    others: dict[str, Any]
    pattern: str
    task: str = ""
    """The kind of task that the operation completes."""

    def calls(self, number: int, text: Any) -> list[dict]:
        """`text` as a session spells it. The last call is the one that is asked about."""
        mark = f"{self.pattern}-{number}"
        if self.task:
            return [call(self.task + "Initiated", handle=mark, localContext={"n": mark}),
                    call(self.export, taskHandle=mark, **{**self.others, self.argument: text})]
        if self.export == "TrackDiscoveredPrintersEx":
            return [call(self.export, discoveredDeviceList=[[["dev_biid", text], ["n", mark]]])]
        arguments = {**self.others, self.argument: text}
        return [call(self.export, **arguments) if "screenName" not in arguments and self.export in UNMARKED
                else call(self.export, **arguments, localContext={"n": mark})]

    def is_of(self, operation: dict, step: dict) -> bool:
        """Whether the companion library was asked for this by the call."""
        if step["call"] == "StartupEx":
            return wide(operation.get("appName", "")) == session_text(step["appName"])
        if step["call"] == "SetLocalSubfolderPathEx":
            return wide(operation.get("path", "")) == session_text(step["subpath"])
        if step["call"] == "TrackDiscoveredPrintersEx":
            return operation.get("data", {}).get("n") == step["discoveredDeviceList"][0][1][1]
        record = operation.get("record")
        if record is None:
            return False
        mark = step.get("taskHandle") or step["localContext"]["n"]
        return (record["app_event_context"]["context_local"]["n"] == mark
                and (record["app_event_action"] == "completed") == ("taskHandle" in step))


UNMARKED = {"StartupEx", "SetLocalSubfolderPathEx"}
_CONTROL = {"screenName": "Home", "controlName": "ok"}
_AD = {"adType": 1, "product": "p", "name": "n", "variant": "v", **_CONTROL}
_FORM = {"orgName": "o", "codeName": "c", "formName": "f", "version": "1.0", "details": {}}
_REPORT = {"orgName": "o", "codeName": "c", "reportName": "r", "version": "1.0", "details": {}}
_INSTALL = {"taskResult": "success", "installerType": 1, "name": "n", "version": "1.2.3"}
_PRINT = {"taskResult": "success", "subsystemType": 1, "itemType": 1, "mimeType": 1, "pageSizeType": 1, "pages": 1}
_START = {"whyType": 1, "howType": 1, "trackSystemInfo": False, "trackPrintQueueInfo": False}

SUBJECTS = {
    "appName": Subject("StartupEx", "appName", _START, "appName"),
    "biid": Subject("TrackDiscoveredPrintersEx", "discoveredDeviceList", {}, "biid"),
    "adName": Subject("AdDisplayed", "name", _AD, "adName"),
    "adProduct": Subject("AdClicked", "product", _AD, "adProduct"),
    "adVariant": Subject("AdClosed", "variant", _AD, "adVariant"),
    "codeName": Subject("FormSubmitted", "codeName", _FORM, "codeName"),
    "controlName": Subject("ButtonClicked", "controlName", _CONTROL, "controlName"),
    "context": Subject("TileClicked", "globalContext", _CONTROL, "context"),
    "flow": Subject("ButtonClicked", "flow", _CONTROL, "flow"),
    "formName": Subject("FormSubmitted", "formName", _FORM, "formName"),
    "installName": Subject("SoftwareInstallCompleted", "name", _INSTALL, "installName", "SoftwareInstall"),
    "installVersion": Subject("SoftwareInstallCompleted", "version", _INSTALL, "installVersion", "SoftwareInstall"),
    "subpath": Subject("SetLocalSubfolderPathEx", "subpath", {}, "subpath"),
    "mode": Subject("TileClicked", "mode", _CONTROL, "mode"),
    "orgName": Subject("ReportGenerated", "orgName", _REPORT, "orgName"),
    "paperSize": Subject("PrintBasicCompleted", "paperSize", _PRINT, "paperSize", "PrintBasic"),
    "reportName": Subject("ReportGenerated", "reportName", _REPORT, "reportName"),
    "screenName": Subject("ScreenDisplayed", "screenName", {}, "screenName"),
    "screenPath": Subject("ButtonClicked", "screenPath", _CONTROL, "screenPath"),
    "taskResult": Subject("SoftwareInstallCompleted", "taskResult", _INSTALL, "taskResult", "SoftwareInstall"),
    "url": Subject("UrlLaunchedEx", "url", {}, "url"),
    "schemaVersion": Subject("FormSubmitted", "version", _FORM, "schemaVersion"),
    # The event class asks more of these.
    "mode of a hyperlink": Subject("HyperlinkClicked", "mode", _CONTROL, "mode"),
    "screenPath of a hyperlink": Subject("HyperlinkClicked", "screenPath", _CONTROL, "screenPath"),
}

_SEEDS = {**SEEDS, "biid": ["unknown", BIID, "f" * 64], "subpath": SUBFOLDERS}
_BESIDE = {**BESIDE, "biid": BAD_BIIDS, "subpath": BAD_SUBFOLDERS}


# Texts that a pattern takes of which mutations find few.
_MADE = {
    "biid": lambda source: "".join(source.choices("0123456789abcdef", k=source.choice((63, 64, 64, 64, 65)))),
    "mode": lambda source: "_".join("".join(source.choices("aZ09", k=source.randint(1, 6)))
                                    for _ in range(source.randint(1, 2))),
    "taskResult": lambda source: "error_" + "".join(source.choices("abYZ059", k=source.randint(1, 6))),
    "schemaVersion": lambda source: f"{source.randrange(500)}.{source.randrange(500)}",
    "installVersion": lambda source: f"{source.randrange(50)}.{source.randrange(50)}.{source.randrange(50)}",
}


def texts_for(name: str, count: int, source: random.Random) -> Iterator[str]:
    """Different texts that the subject's pattern takes, nearly takes, and has nothing to do with, as code units."""
    pattern = SUBJECTS[name].pattern
    seeds, beside = _SEEDS[pattern], _BESIDE[pattern]
    odd = [*ODD, *FORBIDDEN] if pattern == "subpath" else ODD
    units = [*UNITS.get(pattern, ("a", "b_", "Z9")), *(text for text in seeds if 0 < len(text) < 20)]
    made = _MADE.get(pattern)
    seen: set[str] = set()
    while len(seen) < count:
        text = (made(source) if made and source.random() < 0.5
                else source.choice(beside if source.random() < 0.2 else seeds))
        for _ in range(source.choice((0, 1, 1, 2, 2, 3))):
            at = source.randrange(len(text) + 1)
            piece = source.choice(odd if source.random() < 0.4 else units)
            text = text[:at] + piece + text[at + source.randrange(2):]
        if source.random() < 0.01:
            text = text * source.choice((3, 40, 129))
        if text not in seen:
            seen.add(text)
            yield text
