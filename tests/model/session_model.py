"""A model of the exported rules: the records, log lines, answers and settings of a session.

Independent of the library: it shares no code and no table with it.
"""

import hashlib
import hmac
from dataclasses import dataclass
from typing import Any, Callable, Optional

import wide_text
from circumstances import Circumstances
from delivery_model import BEFORE_PAUSE, Delivery
from log_model import Log, LogLine, argument_line, report
from machine_model import Failure
from schema import EXPORTS, HYPERLINK_LABEL, PATTERNS, TASK_RESULT, URL_LABEL, WHITE_SPACE, Argument, Export
from session_arguments import read_arguments, shown_arguments
from wide_text import formatted, quoted

API = "Zuvan::Lumeq::API::"

NextThread = Callable[[int, list[list[dict]]], int]
"""Which of several threads makes the next call: takes the number of lines logged so far, and the calls that each thread
has still to make. Only the log shows this: call_history.py."""

# The key of development builds.
BIID_KEY = b"0123456789abcdef" * 8


class Chance:
    """A placeholder for a value that differs from run to run, one for all places that show it."""

    def __init__(self, kind: str):
        self.kind = kind

    def __repr__(self) -> str:
        return f"<{self.kind} {id(self):x}>"


@dataclass
class Prediction:
    answers: list[dict]
    """The host's lines."""
    operations: list[dict]
    """The companion's, without their times."""
    log: list[LogLine]
    """But for DEBUG."""
    settings: dict[str, Any]
    """The local settings files by their folders."""
    together: list[slice]
    """The answers of threads that ran at the same time. The host may print these in any order."""


@dataclass
class Task:
    label: str
    context: dict


class SessionModel:
    """One host process."""

    def __init__(self, circumstances: Circumstances, next_thread: Optional[NextThread] = None):
        self._circumstances = circumstances
        self._next_thread = next_thread
        self._together: list[slice] = []
        self._log = Log(circumstances)
        self._delivery = Delivery(circumstances, self._log)
        self._handles: dict[str, Optional[Task]] = {}
        self._answers: list[dict] = []
        self._load()

    def prediction(self) -> Prediction:
        return Prediction(self._answers, self._delivery.companion.operations, self._log.lines,
                          self._delivery.files.all(), self._together)

    def call(self, step: dict) -> list[LogLine]:
        """Plays one call. Returns the lines that it logs."""
        logged = len(self._log.lines)
        self._answers.append(self._call(step))
        return self._log.lines[logged:]

    def play(self, steps: list[dict]) -> None:
        for step in steps:
            if "call" in step:
                self.call(step)
            elif "times" in step:
                for _ in range(step["times"]):
                    self.play(step["calls"])
            elif "threads" in step:
                self._play_threads(step["threads"])
            elif "unload" in step:
                self._loaded = False
            elif "load" in step:
                self._load()

    def _play_threads(self, threads: list[list[dict]]) -> None:
        if len(threads) == 1:
            return self.play(threads[0])
        first = len(self._answers)
        left = [list(calls) for calls in threads]
        while any(left):
            self.call(left[self._next_thread(len(self._log.lines), left)].pop(0))
        self._together.append(slice(first, len(self._answers)))
        return None

    def _load(self) -> None:
        self._loaded = True
        self._model_name = ""
        self._log.restart()
        self._delivery.restart()

    def _call(self, step: dict) -> dict:
        answer = {"call": step["call"]}
        if not self._loaded:
            return {**answer, "error": "Lumeq.dll is not loaded"}
        export = EXPORTS[step["call"]]
        if export.family == "plain":
            return {**answer, **self._plain(export, step)}
        return {**answer, **self._framed(export, step)}

    # The frame

    def _framed(self, export: Export, step: dict) -> dict:
        arguments = read_arguments(export, step)
        if export.family == "initiated":
            arguments["handle"] = step.get("handle", "")
        if self._circumstances.disabled == 1:
            return self._untouched(export, arguments)
        has_task = "taskHandle" in arguments and self._task(arguments) is not None
        self._trace(export, argument_line(export.trace, shown_arguments(export, arguments, has_task)))
        family: Callable = getattr(self, "_" + export.family)
        try:
            done = family(export, arguments)
        except Failure as failure:
            self._report(export, str(failure), "Exception")
            done = None
        return self._untouched(export, arguments) if done is None else done

    def _untouched(self, export: Export, arguments: dict) -> dict:
        """What the host sees of a call that gave nothing."""
        if export.family == "initiated":
            self._handles[arguments["handle"]] = None
            return {"handle": "null"}
        if export.family == "completed":
            return {"handle": "set" if self._task(arguments) else "null"}
        if export.family == "get_opt_in":
            return {"returns": False}
        for argument in export.arguments:
            if argument.kind == "result":
                return {"returns": wide_text.shown(arguments[argument.name])}
        return {}

    def _trace(self, export: Export, message: str) -> None:
        self._log.write("TRACE", API + export.name, message)

    def _warn(self, message: str, function: str = "") -> None:
        self._log.write("WARNING", function, message)

    def _report(self, export: Export, detail: str, title: str = "Validation failed") -> bool:
        self._log.write("ERROR", "", *report(title, API + export.name, detail))
        return False

    def _passes(self, export: Export, arguments: dict, names: Optional[tuple] = None) -> bool:
        """Every check is made, whatever the earlier ones gave."""
        results = [self._check(export, argument, arguments)
                   for name in (export.checks if names is None else names)
                   for argument in export.arguments if argument.name == name]
        return all(results)

    def _check(self, export: Export, argument: Argument, arguments: dict) -> bool:
        value = arguments[argument.name]
        if argument.kind == "handle":
            return self._task(arguments) is not None or self._report(export, "null taskHandle arg")
        if argument.kind == "number":
            return value >= 0 or self._report(export, f"invalid {argument.name} arg: {value}")
        if value is None or PATTERNS[argument.pattern].matches(value):
            return True
        strength = "optional" if argument.kind == "optional" else "REQUIRED"
        name = "urlNoPii" if argument.name == "url" else argument.name
        return self._report(export, f"invalid [{strength}] {name} arg: {quoted(value)}")

    @staticmethod
    def _converted(export: Export, arguments: dict, names: list[str]) -> None:
        """The first undefined value ends the call."""
        enumerations = {argument.name: argument.enumeration for argument in export.arguments}
        for name in names:
            if not enumerations[name].has(arguments[name]):
                raise Failure(enumerations[name].thrown(arguments[name]))

    # Events

    def _context(self, arguments: dict, **local_entries) -> dict:
        model = arguments["globalContext"] or self._model_name or None
        local = arguments["localContext"]
        if local_entries:
            local = {**(local or {}), **local_entries}
        return {"schema": "app_event_context/1.0.0", "context_global": {"_dev_modelname": model},
                "context_local": local}

    def _post(self, actor: str, action: str, object_: str, label: str, context: dict, details: Optional[dict]) -> None:
        self._delivery.ask("PostEventXX", "PostEvent", timestamp=Chance("timestamp"), record={
            "schema": "app_eventinfo/2.0.1", "app_event_actor": actor, "app_event_action": action,
            "app_event_object": object_, "app_event_object_label": label, "app_event_context": context,
            "app_event_details": details or None})

    def _screen(self, export: Export, arguments: dict) -> None:
        if not self._passes(export, arguments):
            return
        label = "".join(("/" + arguments["flow"] + ".flow" if arguments["flow"] else "",
                         "/" + arguments["screenPath"] if arguments["screenPath"] else "",
                         "/" + arguments["screenName"],
                         "-" + arguments["mode"] if arguments["mode"] else "",
                         export.facts["suffix"] + arguments["controlName"] if "controlName" in arguments else ""))
        details = self._ad_details(export, arguments) if "adType" in arguments else None
        if export.facts["object"] == "hyperlink" and not HYPERLINK_LABEL.matches(label):
            raise Failure("objectLabel is not formatted correctly. Must be of form "
                          "[/<Flow>.flow][/<ScreenPath>]/<ScreenName>[-<Mode>]#url_<ControlName>")
        action = "unchecked" if arguments.get("isChecked") == 0 else export.facts["action"]
        self._post(export.facts["actor"], action, export.facts["object"], label, self._context(arguments), details)

    def _ad_details(self, export: Export, arguments: dict) -> dict:
        self._converted(export, arguments, ["adType"])
        details = {"schema": "generic/1.0.0", "moniker": "x-dvrn_ad_basic/1.0",
                   "campaign_type": export.arguments[0].enumeration.text(arguments["adType"])}
        for name in ("product", "name", "variant"):
            text = arguments[name]
            details["campaign_" + name] = "unknown" if not text or WHITE_SPACE.matches(text) else text
        return details

    def _url(self, export: Export, arguments: dict) -> None:
        url = arguments["url"].partition("?")[0]
        if not self._passes(export, {**arguments, "url": url}):
            return
        if wide_text.has_unpaired(url):
            raise Failure("bad conversion")
        if not URL_LABEL.matches(url):
            raise Failure("objectLabel is not formatted correctly. Must be of form ^(file|https?)://[^?]+$")
        self._post("app", "launched", "url", url, self._context(arguments), None)

    def _generic(self, export: Export, arguments: dict) -> None:
        if not self._passes(export, arguments):
            return
        kind = export.facts["object"]
        moniker = f"x-{{orgName}}_{{codeName}}_{kind}_{{{kind}Name}}/{{version}}".format_map(arguments)
        self._post(export.facts["actor"], export.facts["action"], kind, kind + "_generic", self._context(arguments), {
            **arguments["details"], "schema": f"app_event_{kind}_generic/1.0.0", "moniker": moniker})

    # Tasks

    def _task(self, arguments: dict) -> Optional[Task]:
        return self._handles.get(arguments["taskHandle"])

    def _initiated(self, export: Export, arguments: dict) -> Optional[dict]:
        if not self._passes(export, arguments):
            return None
        task = Task(export.facts["label"], self._context(arguments, _app_event_task_guid=Chance("guid")))
        self._post("self", "initiated", "task", task.label, task.context, None)
        self._handles[arguments["handle"]] = task
        return {"handle": "set"}

    def _completed(self, export: Export, arguments: dict) -> Optional[dict]:
        if not self._passes(export, arguments):
            return None
        self._converted(export, arguments, export.facts["conversions"])
        details = {"schema": export.facts["schema"]}
        texts = {argument.name: argument.enumeration.text(arguments[argument.name])
                 for argument in export.arguments if argument.enumeration}
        for key, name in export.facts["fields"]:
            details[key] = texts.get(name, arguments[name])
            if isinstance(details[key], int):
                details[key] = str(details[key])
        result = arguments["taskResult"]
        if not TASK_RESULT.matches(result):
            raise Failure("Task result is not formatted correctly. Must be of form "
                          "success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?)")
        task = self._task(arguments)
        self._post("self", "completed", "task", task.label, task.context,
                   {**details, "task_result": result, "task_duration": Chance("duration")})
        self._handles[arguments["taskHandle"]] = None
        return {"handle": "null"}

    # Devices and texts

    def _printers(self, export: Export, arguments: dict) -> None:
        for device in arguments["discoveredDeviceList"]:
            if not device:
                self._warn("skipping discovered device with no information (empty dictionary)", API + export.name)
                continue
            if "dev_biid" not in device:
                raise Failure("invalid unordered_map<K, T> key")
            if not PATTERNS["biid"].matches(device["dev_biid"]):
                self._warn(formatted("skipping discovered device with invalid BIID: %s", quoted(device["dev_biid"])),
                           API + export.name)
                continue
            self._delivery.ask("PostDataXX", "PostData", dataType="sys_printer_discoverylist", data=device)

    def _biid(self, export: Export, arguments: dict) -> Optional[dict]:
        uuid = arguments["deviceUuid"]
        if not uuid:
            self._report(export, "empty deviceUuid")
            return None
        biid = hmac.new(BIID_KEY, uuid.partition(b"\0")[0], hashlib.sha256).hexdigest()
        self._trace(export, f"...returns biid: {quoted(biid)}")
        return {"returns": biid}

    def _to_string(self, export: Export, arguments: dict) -> Optional[dict]:
        text = export.arguments[0].enumeration.text(arguments["enumValue"])
        self._trace(export, f"...returns textValue: {quoted(text)}")
        return {"returns": text}

    def _plain(self, export: Export, step: dict) -> dict:
        argument = export.facts["passes"]
        form = step[argument]
        if argument == "deviceUuid":
            form = {"units": list(wide_text.session_bytes(form).partition(b"\0")[0])}
        text = self._framed(EXPORTS[export.facts["of"]], {argument: form})["returns"]
        size = step.get("size", 256)
        has_buffer = "buffer" not in step or step["buffer"] is not None
        before = wide_text.session_text(step.get("buffer") or "").partition("\0")[0]
        if not has_buffer or size == 0:
            return {"returns": {"result": 22, "text": wide_text.shown(before) if has_buffer else None}}
        if len(text) >= size:
            return {"returns": {"result": 34, "text": ""}}
        return {"returns": {"result": 0, "text": text}}

    # The session's life

    def _startup(self, export: Export, arguments: dict) -> None:
        passes = self._passes(export, arguments, ("appName",))
        if self._delivery.has_flag(BEFORE_PAUSE):
            self._log.write("ERROR", API + export.name,
                            f"{BEFORE_PAUSE} exists and it shouldn't that means there was a CRASH!!")
            self._delivery.end_pause()
        if not passes:
            return
        self._converted(export, arguments, ["whyType", "howType"])
        numbers = {argument.name: argument.enumeration.records[arguments[argument.name]]
                   for argument in export.arguments if argument.enumeration}
        self._delivery.start(appName=arguments["appName"], **numbers, trackSystemInfo=arguments["trackSystemInfo"],
                             trackPrintQueueInfo=arguments["trackPrintQueueInfo"])

    def _timeout(self, export: Export, arguments: dict) -> int:
        return arguments["timeoutMsec"] if self._passes(export, arguments, ("timeoutMsec",)) else 10000

    def _shutdown(self, export: Export, arguments: dict) -> None:
        timeout = self._timeout(export, arguments)
        self._delivery.end_pause()
        self._delivery.ask("ShutdownXX", "Shutdown", timeoutMsec=timeout)

    def _flush(self, export: Export, arguments: dict) -> None:
        self._delivery.ask("FlushXX", "Flush", timeoutMsec=self._timeout(export, arguments))

    def _track(self, export: Export, arguments: dict) -> None:
        self._delivery.ask(export.facts["operation"] + "XX", export.facts["operation"])

    def _global_context(self, export: Export, arguments: dict) -> None:
        if self._passes(export, arguments):
            self._model_name = arguments["globalContext"]

    def _subfolder_path(self, export: Export, arguments: dict) -> None:
        if self._passes(export, arguments):
            self._delivery.use_subfolder(arguments["subpath"])

    def _pause(self, export: Export, arguments: dict) -> None:
        self._delivery.pause()

    def _resume(self, export: Export, arguments: dict) -> None:
        self._delivery.end_pause()

    def _set_opt_in(self, export: Export, arguments: dict) -> None:
        if self._delivery.has_flag(BEFORE_PAUSE):
            self._delivery.set_flag(BEFORE_PAUSE, arguments["userHasOptedIn"])
        self._delivery.set_opt_in(arguments["userHasOptedIn"])

    def _get_opt_in(self, export: Export, arguments: dict) -> Optional[dict]:
        value = self._delivery.opt_in()
        self._trace(export, f"...returns: {str(value).lower()}")
        return {"returns": value}


def predict(steps: list[dict], circumstances: Circumstances, next_thread: Optional[NextThread] = None) -> Prediction:
    model = SessionModel(circumstances, next_thread)
    model.play(steps)
    return model.prediction()
