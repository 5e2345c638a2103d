"""The six pairs of task exports, a good call of each, and what such a call leaves."""

import re
from typing import NamedTuple

from .log_lines import LogLine, error, trace
from .outcome import record
from .session_case import call

# Placeholders for the values that differ from run to run.
GUID = "(guid)"
MILLISECONDS = "(ms)"
HANDLE = "(handle)"

NULL_HANDLE = "0x0000000000000000"


class Pair(NamedTuple):
    """An Initiated and a Completed export. The fields describe the Completed call, from the argument after `taskResult` on."""

    name: str
    label: str
    schema: str
    good: dict
    """Arguments that pass."""
    details: dict
    """The record's fields for them, after `task_duration`."""
    logged: str
    """The arguments in the log, with the name of each instead of its text."""
    texts: dict
    """The good arguments as the log shows them."""


SCAN = Pair(
    "ScanAcquire", "task_scan_acquire", "app_event_task_scan_acquire/1.0.0",
    {"shortcutType": 5, "shortcutVarianceType": 3, "itemType": 2, "resolutionType": 8, "colorModeType": 4,
     "pageSizeType": 7, "sourceType": 4, "mimeType": 5, "features": {"deskew": True, "auto crop": False}, "pages": 2},
    {"scan_acquire_shortcut": "save_pdf", "scan_acquire_shortcut_variance": "original", "scan_acquire_itemtype": "photo",
     "scan_acquire_resolution": "dpi_600", "scan_acquire_colormode": "gray", "scan_acquire_pagesize": "letter",
     "scan_acquire_source": "flatbed", "scan_acquire_mimetype": "image/jpg",
     "scan_acquire_features": {"deskew": "true", "auto crop": "false"}, "scan_acquire_pages": "2"},
    "shortcutType: {shortcutType}, shortcutVarianceType: {shortcutVarianceType}, itemType: {itemType}, "
    "resolutionType: {resolutionType}, colorModeType: {colorModeType}, pageSizeType: {pageSizeType}, "
    "sourceType: {sourceType}, mimeType: {mimeType}, features: [{features} item(s)], pages: {pages}",
    {"shortcutType": "save_pdf", "shortcutVarianceType": "original", "itemType": "photo", "resolutionType": "dpi_600",
     "colorModeType": "gray", "pageSizeType": "letter", "sourceType": "flatbed", "mimeType": "image/jpg",
     "features": "2", "pages": "2"})
PRINT = Pair(
    "PrintBasic", "task_print_basic", "app_event_task_print_basic/1.0.0",
    {"subsystemType": 1, "itemType": 3, "mimeType": 1, "pageSizeType": 8, "paperSize": "A4 plain", "pages": 7},
    {"print_basic_subsystem": "ipp", "print_basic_type": "photo/single", "print_basic_mimetype": "application/pdf",
     "print_basic_size": "size_13x18_cm", "print_basic_papersize": "A4 plain", "print_basic_pages": "7"},
    "subsystemType: {subsystemType}, itemType: {itemType}, mimeType: {mimeType}, pageSizeType: {pageSizeType}, "
    'paperSize: "{paperSize}", pages: {pages}',
    {"subsystemType": "ipp", "itemType": "photo/single", "mimeType": "application/pdf", "pageSizeType": "size_13x18_cm",
     "paperSize": "A4 plain", "pages": "7"})
SEND = Pair(
    "FileSendTo", "task_file_sendto", "app_event_task_file_sendto/1.0.0",
    {"shortcutType": 7, "shortcutVarianceType": 2, "mimeType": 9, "destinationType": 3, "pages": 1},
    {"scan_sendto_shortcut": "send_cloud", "scan_sendto_shortcut_variance": "modified_one_off",
     "scan_sendto_mimetype": "text/ansi", "scan_sendto_destination": "cloud_googledrive", "scan_sendto_pages": "1"},
    "shortcutType: {shortcutType}, shortcutVarianceType: {shortcutVarianceType}, mimeType: {mimeType}, "
    "destinationType: {destinationType}, pages: {pages}",
    {"shortcutType": "send_cloud", "shortcutVarianceType": "modified_one_off", "mimeType": "text/ansi",
     "destinationType": "cloud_googledrive", "pages": "1"})
CONNECT = Pair(
    "DeviceConnect", "task_device_connect", "app_event_task_device_connect/1.0.0",
    {"scenarioType": 3, "methodType": 7},
    {"connect_scenario": "convert", "connect_method": "usb"},
    "scenarioType: {scenarioType}, methodType: {methodType}",
    {"scenarioType": "convert", "methodType": "usb"})
CONFIG = Pair(
    "DeviceConfig", "task_device_config", "app_event_task_device_config/1.0.0",
    {"settingType": 1}, {"config_setting": "pbut_consent_enable"},
    "settingType: {settingType}", {"settingType": "pbut_consent_enable"})
INSTALL = Pair(
    "SoftwareInstall", "task_sw_install", "app_event_task_sw_install/1.0.0",
    {"installerType": 1, "name": "setup tool.exe", "version": "1.2.3.4"},
    {"install_type": "exe", "install_name": "setup tool.exe", "install_version": "1.2.3.4"},
    # The version is in both kinds of quotation marks.
    "installerType: {installerType}, name: \"{name}\", version: '\"{version}\"'",
    {"installerType": "exe", "name": "setup tool.exe", "version": "1.2.3.4"})
PAIRS = (SCAN, PRINT, SEND, CONNECT, CONFIG, INSTALL)


def initiated(pair: Pair, handle: str = "h", **contexts) -> dict:
    return call(pair.name + "Initiated", handle=handle, **contexts)


def completed(pair: Pair, handle: str = "h", result: str = "success", **changes) -> dict:
    """A call with the pair's good arguments, but for the changes."""
    return call(pair.name + "Completed", taskHandle=handle, taskResult=result, **{**pair.good, **changes})


def initiated_record(pair: Pair, **others) -> dict:
    """`others`: the context, without the task's own identifier."""
    return _record(pair, "initiated", None, **others)


def completed_record(pair: Pair, result: str = "success", details: dict = {}, **others) -> dict:
    """With the details of the pair's good arguments, but for those given."""
    return _record(pair, "completed", {"schema": pair.schema, "task_result": result, "task_duration": MILLISECONDS,
                                       **pair.details, **details}, **others)


def _record(pair: Pair, action: str, details, local: dict = {}, model=None) -> dict:
    return record("self", action, "task", pair.label, details, {"_app_event_task_guid": GUID, **local}, model)


def initiated_line(pair: Pair, local: str = "(null)", model: str = "(null)") -> LogLine:
    return trace(pair.name + "Initiated", f"localContext: {local}, globalContext: {model}")


def completed_line(pair: Pair, handle: str = HANDLE, result: str = "success", **changed_texts) -> LogLine:
    arguments = pair.logged.format(**{**pair.texts, **changed_texts})
    return trace(pair.name + "Completed", f'taskHandle: {handle}, taskResult: "{result}", {arguments}')


def refusal(pair: Pair, detail: str, title: str = "Validation failed") -> LogLine:
    return error(pair.name + "Completed", detail, title)


def masked(lines: list[LogLine]) -> list[LogLine]:
    """Without the digits of handles that are not null."""
    return [line._replace(message=re.sub(r"taskHandle: 0x(?!0{16})[0-9A-F]{16}(?=,)", f"taskHandle: {HANDLE}", line.message))
            for line in lines]


def without_chance(operation: dict) -> dict:
    """With what no two runs share replaced, after a look at its form."""
    operation = dict(operation)
    if "record" not in operation:
        return operation
    assert 1_500_000_000_000 < operation.pop("timestamp") < 2_147_483_647_000
    local = operation["record"]["app_event_context"]["context_local"]
    if local and "_app_event_task_guid" in local:
        assert re.fullmatch(r"[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}", local["_app_event_task_guid"])
        local["_app_event_task_guid"] = GUID
    details = operation["record"]["app_event_details"]
    if details and "task_duration" in details:
        assert re.fullmatch(r"\d+", details["task_duration"])
        details["task_duration"] = MILLISECONDS
    return operation


def task_records(outcome) -> list[dict]:
    """The records that reached the companion, without what no two runs share."""
    return [without_chance(operation)["record"] for operation in outcome.companion]


def guids(outcome) -> list[str]:
    return [event["app_event_context"]["context_local"]["_app_event_task_guid"] for event in outcome.records]
