"""The exports, their arguments, and the rules and vocabulary of the event schema, as tables."""

import re
from typing import NamedTuple, Optional


class Pattern:
    """A rule for a whole text, by code units.

    Written so that no text takes more than linear time: where a rule nests quantifiers, this is the same language
    without them.
    """

    def __init__(self, expression: str, ignores_case: bool = False):
        self._expression = re.compile(expression, (re.IGNORECASE | re.ASCII if ignores_case else 0) | re.DOTALL)

    def matches(self, text: str) -> bool:
        return self._expression.fullmatch(text) is not None


# Letters and digits that nobody disputes; what else the platform counts as such is its own affair, and no session asks.
LETTERS = ("\u0130\u0131\u017f\u212a\uff21"
           "\u00c0-\u00d6\u00d8-\u00f6\u00f8-\u00fe\u03b1-\u03c9\u0430-\u044f\u4e00-\u9fa5\uac00-\ud7a3")
SPACES = "\t-\r \u00a0\u2000-\u200a\u2028\u2029\u3000"
W = f"[0-9A-Za-z_{LETTERS}]"

_VISIBLE = r"[^\x00-\x20\x80-\x9f]"
_PRINTED = r"[^\x00-\x1f\x80-\x9f]"
_FILE_CHARACTER = r'[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]'
_NAME = f"{_VISIBLE}(?:{_PRINTED}*{_VISIBLE})?"
_AN = "[A-Za-z0-9]"

PATTERNS = {
    "appName": Pattern(_NAME),
    "biid": Pattern("unknown|[a-f0-9]{64}"),
    "adName": Pattern(f"(?:{_NAME})?"),
    "adProduct": Pattern(f"(?:{_NAME})?"),
    "adVariant": Pattern(f"(?:{_NAME})?"),
    "codeName": Pattern("[a-z]+"),
    "controlName": Pattern(f"{_AN}(?:(?:-|{W})*{_AN})?"),
    "context": Pattern(_PRINTED + "{1,128}"),
    "flow": Pattern(f"(?:{_AN}(?:{W}*{_AN})?)?"),
    "formName": Pattern("[a-z]+(?:_[a-z]+)?"),
    "installName": Pattern(_FILE_CHARACTER + "+"),
    "installVersion": Pattern(r"[0-9]+\.[0-9]+\.[0-9]+(?:\.[0-9]+)?"),
    "subpath": Pattern(rf"\\?{_FILE_CHARACTER}+(?:\\{_FILE_CHARACTER}+)*\\?"),
    "mode": Pattern(f"{_AN}+(?:_{_AN}+)*"),
    "orgName": Pattern("[a-z]+"),
    "paperSize": Pattern(_NAME),
    "reportName": Pattern("[a-z]+(?:_[a-z]+)?"),
    "screenName": Pattern(f"{_AN}(?:{W}*{_AN})?"),
    "screenPath": Pattern(f"(?:{_AN}{W}*(?:/{_AN}{W}*)*)?"),
    "taskResult": Pattern("success|unknown|error(?:_(?:[0-9]+|[a-zA-Z][a-zA-Z0-9]*))?"),
    "url": Pattern(f"(?:file|https?)://[^/]+(?:/[^?{SPACES}]*)?", ignores_case=True),
    "schemaVersion": Pattern(r"[0-9]+\.[0-9]+"),
}

# The second, stricter checks of the event classes.
HYPERLINK_LABEL = Pattern(rf"(?:/{_AN}(?:{W}*{_AN})?\.flow)?(?:/{_AN}(?:{W}*{_AN})?(?:/{_AN}(?:{W}*{_AN})?)*)?"
                          rf"/{_AN}(?:{W}*{_AN})?(?:-{_AN}+)?#url_{_AN}(?:(?:-|{W})*{_AN})?")
URL_LABEL = Pattern("(?:file|https?)://[^?]+")
TASK_RESULT = Pattern("success|unknown|error(?:_(?:[a-zA-Z][a-zA-Z0-9]+|[0-9]+))?")
WHITE_SPACE = Pattern(f"[{SPACES}]+")


class Enumeration(NamedTuple):
    name: str
    """As a failed conversion reports it."""
    texts: tuple[str, ...]
    """By the number that a host passes."""
    records: tuple[int, ...] = ()
    """The numbers that are sent instead, for those that are sent as numbers."""
    logged_name: str = ""
    """As the log line of the arguments shows it, if that is another name."""

    def text(self, number: int) -> str:
        if 0 <= number < len(self.texts):
            return self.texts[number]
        return f"[Undefined {self.logged_name or self.name} value: {number}]"

    def has(self, number: int) -> bool:
        return 0 <= number < len(self.texts)

    def thrown(self, number: int) -> str:
        return f"[Undefined {self.name}: {number}]"


def _enumeration(name: str, texts: str, **others) -> Enumeration:
    return Enumeration(name, ("unknown", *texts.split()), **others)


AD = _enumeration("AdType", "banner hyperlink tile virtualalert")
SETTING = _enumeration("ConfigurationSettingType", "pbut_consent_enable webservices_registration")
METHOD = _enumeration(
    "ConnectionMethodType", "already_on_network auto_wireless_connect ethernet frontpanel_setup_of_wireless later "
    "press_wireless_button usb usb_plus_wifi usb_setup_of_wireless usb_to_wifi wifi_direct")
SCENARIO = _enumeration("ConnectionScenarioType", "add connect convert reconfigure")
HOW = _enumeration(
    "HowType", "cd_exe desktop_shortcut desktop_toast dxp_link folder_exe pnp_inf smv_link startmenu_shortcut udc_tile",
    records=(9, 0, 1, 2, 3, 4, 5, 6, 7, 8))
INSTALL = _enumeration("InstallType", "exe msi")
WHY = _enumeration(
    "WhyType",
    "add_device add_software reconfigure_device start_app view_device view_device_error view_device_supplies",
    records=(4, 0, 1, 2, 3, 5, 6, 7))
_SHORTCUTS = "email_jpg email_pdf every_day_scan save_jpg save_pdf save_text send_cloud user"
_VARIANCES = "modified modified_one_off original original_one_off user user_one_off"
FILE_DESTINATION = _enumeration(
    "File::DestinationType",
    "cloud_box cloud_dropbox cloud_googledrive cloud_onedrive email_mapi email_smtp folder")
FILE_MIME = _enumeration(
    "File::MimeType",
    "application/pdf application/pdfsearchable image/jpg image/bmp image/tiff image/png application/rtf "
    "text/unicode text/ansi text/utf8")
FILE_SHORTCUT = _enumeration("File::ShortcutType", _SHORTCUTS)
FILE_VARIANCE = _enumeration("File::ShortcutVarianceType", _VARIANCES)
SCAN_COLOR = _enumeration("Scan::ColorModeType", "auto blackwhite color gray halftone", logged_name="ColorModeType")
SCAN_ITEM = _enumeration("Scan::ItemType", "document photo")
SCAN_MIME = _enumeration(
    "Scan::MimeType",
    "application/pdf application/pdfsearchable application/rtf image/bmp image/jpg image/png image/tiff "
    "text/ansi text/unicode text/utf8")
SCAN_PAGE = _enumeration(
    "Scan::PageSizeType",
    "a4 auto custom entirearea extralong legal letter long size_4x6 size_5x7 size_8x10 snap")
SCAN_RESOLUTION = _enumeration(
    "Scan::ResolutionType",
    "dpi_75 dpi_100 dpi_200 dpi_240 dpi_300 dpi_400 dpi_500 dpi_600 dpi_1200 dpi_2400 dpi_4800")
SCAN_SHORTCUT = _enumeration("Scan::ShortcutType", _SHORTCUTS)
SCAN_VARIANCE = _enumeration("Scan::ShortcutVarianceType", _VARIANCES)
SCAN_SOURCE = _enumeration("Scan::SourceType", "adf_duplex_book adf_duplex_tablet adf_simplex flatbed")
PRINT_ITEM = _enumeration("Print::ItemType", "document photo/multi photo/single")
PRINT_MIME = _enumeration("Print::MimeType", "application/pdf image/*")
PRINT_PAGE = _enumeration(
    "Print::PageSizeType", "full size_3p5x5 size_4x6 size_5x7 size_8x10 size_9x13_cm size_10x15_cm size_13x18_cm")
PRINT_SUBSYSTEM = _enumeration("Print::SubsystemType", "ipp native")


class Argument(NamedTuple):
    name: str
    kind: str
    """required, optional, context, details, enumeration, flag, byte, number, features, devices, handle, narrow, result,
    buffer, size"""
    pattern: str = ""
    enumeration: Optional[Enumeration] = None


class Export(NamedTuple):
    name: str
    family: str
    """Selects the method of session_model that models it."""
    arguments: tuple[Argument, ...]
    trace: str
    """Its line in the log, with the names of arguments in braces."""
    facts: dict = {}
    """How it differs from the other members of its family."""
    checks: tuple[str, ...] = ()
    """Names of the checked arguments, in order."""


def _required(name: str, pattern: str = "") -> Argument:
    return Argument(name, "required", pattern or name)


def _optional(name: str, pattern: str = "") -> Argument:
    return Argument(name, "optional", pattern or name)


def _enumerated(name: str, enumeration: Enumeration) -> Argument:
    return Argument(name, "enumeration", enumeration=enumeration)


_CONTEXTS = (Argument("localContext", "context"), _optional("globalContext", "context"))
_SCREEN = (_optional("flow"), _optional("screenPath"), _required("screenName"), _optional("mode"))
_CONTROL = (*_SCREEN, _required("controlName"), *_CONTEXTS)
_AD = (_enumerated("adType", AD), _required("product", "adProduct"), _required("name", "adName"),
       _required("variant", "adVariant"), *_CONTROL)

_SCREEN_LINE = "flow: {flow}, screenPath: {screenPath}, screenName: {screenName}, mode: {mode}, "
_CONTEXT_LINE = "localContext: {localContext}, globalContext: {globalContext}"
_CONTROL_LINE = _SCREEN_LINE + "controlName: {controlName}, " + _CONTEXT_LINE
# The name of the argument is spelled so in three lines.
_CONTRO_LINE = _SCREEN_LINE + "controName: {controlName}, " + _CONTEXT_LINE
_AD_LINE = "adType: {adType}, product: {product}, name: {name}, variant: {variant}, " + _CONTROL_LINE


def _ui(name: str, arguments: tuple[Argument, ...], trace: str, actor: str, action: str, object_: str,
        suffix: str = "#", family: str = "screen") -> Export:
    # A screen's arguments are checked in the order in which they stand.
    return Export(name, family, arguments, trace,
                  {"actor": actor, "action": action, "object": object_, "suffix": suffix},
                  tuple(argument.name for argument in arguments if argument.pattern))


def _generic(name: str, kind: str, actor: str, action: str) -> Export:
    own = kind + "Name"
    arguments = (_required("orgName"), _required("codeName"), _required(own), _required("version", "schemaVersion"),
                 Argument("details", "details"), *_CONTEXTS)
    return Export(name, "generic", arguments,
                  f"orgName: {{orgName}}, codeName: {{codeName}}, {own}: {{{own}}}, version: {{version}}, "
                  "details: {details}, " + _CONTEXT_LINE,
                  {"actor": actor, "action": action, "object": kind},
                  ("orgName", "codeName", own, "version", "globalContext"))


def _pair(name: str, label: str, schema: str, arguments: tuple[Argument, ...], trace: str,
          fields: tuple[tuple[str, str], ...], conversions: str, checks: str = "") -> tuple[Export, Export]:
    """`fields`: the record's keys with the arguments that they hold; `conversions` in their own order."""
    initiated = Export(name + "Initiated", "initiated", _CONTEXTS, _CONTEXT_LINE, {"label": label}, ("globalContext",))
    completed = Export(
        name + "Completed", "completed",
        (Argument("taskHandle", "handle"), _required("taskResult"), *arguments),
        "taskHandle: 0x{taskHandle}, taskResult: {taskResult}, " + trace,
        {"schema": schema, "fields": fields, "conversions": conversions.split()},
        ("taskHandle", "taskResult", *checks.split()))
    return initiated, completed


_PAGES = Argument("pages", "number")

_ALL = (
    Export("StartupEx", "startup", (
        _required("appName"), _enumerated("whyType", WHY), _enumerated("howType", HOW),
        Argument("trackSystemInfo", "flag"), Argument("trackPrintQueueInfo", "flag")),
        "appName: {appName}, whyType: {whyType}, howType: {howType}, trackSystemInfo: {trackSystemInfo}, "
        "trackPrintQueueInfo: {trackPrintQueueInfo}"),
    Export("ShutdownEx", "shutdown", (Argument("timeoutMsec", "number"),), "timeoutMsec: {timeoutMsec}"),
    Export("FlushEx", "flush", (Argument("timeoutMsec", "number"),), "timeoutMsec: {timeoutMsec}"),
    Export("Pause", "pause", (), ""),
    Export("Resume", "resume", (), ""),
    Export("SetUserOptInEx", "set_opt_in", (Argument("userHasOptedIn", "flag"),), "userHasOptedIn: {userHasOptedIn}"),
    Export("GetUserOptInEx", "get_opt_in", (), ""),
    Export("SetLocalSubfolderPathEx", "subfolder_path", (_required("subpath"),), "subpath: {subpath}",
           checks=("subpath",)),
    Export("TrackPrintQueueInfoEx", "track", (), "", {"operation": "TrackPrintQueueInfo"}),
    Export("TrackSystemInformationEx", "track", (), "", {"operation": "TrackSystemInformation"}),
    Export("SetGlobalContextEx", "global_context", (Argument("globalContext", "model", "context"),),
           "globalContext: {globalContext}", checks=("globalContext",)),
    _ui("ScreenDisplayed", (*_SCREEN, *_CONTEXTS), _SCREEN_LINE + _CONTEXT_LINE, "app", "displayed", "screen"),
    _ui("ButtonClicked", _CONTROL, _CONTRO_LINE, "user", "clicked", "button"),
    _ui("TileClicked", _CONTROL, _CONTRO_LINE, "user", "clicked", "tile"),
    _ui("HyperlinkClicked", _CONTROL, _CONTRO_LINE, "user", "clicked", "hyperlink", "#url_"),
    _ui("CheckboxChanged", (Argument("isChecked", "byte"), *_CONTROL), "isChecked: {isChecked}, " + _CONTROL_LINE,
        "user", "checked", "checkbox"),
    _ui("AdDisplayed", _AD, _AD_LINE, "app", "displayed", "ad"),
    _ui("AdClicked", _AD, _AD_LINE, "user", "clicked", "ad"),
    _ui("AdClosed", _AD, _AD_LINE, "user", "closed", "ad"),
    _ui("UrlLaunchedEx", (_required("url"), *_CONTEXTS), "url: {url}, " + _CONTEXT_LINE, "app", "launched", "url",
        family="url"),
    _generic("FormSubmitted", "form", "user", "submitted"),
    _generic("ReportGenerated", "report", "app", "generated"),
    *_pair("ScanAcquire", "task_scan_acquire", "app_event_task_scan_acquire/1.0.0", (
        _enumerated("shortcutType", SCAN_SHORTCUT), _enumerated("shortcutVarianceType", SCAN_VARIANCE),
        _enumerated("itemType", SCAN_ITEM), _enumerated("resolutionType", SCAN_RESOLUTION),
        _enumerated("colorModeType", SCAN_COLOR), _enumerated("pageSizeType", SCAN_PAGE),
        _enumerated("sourceType", SCAN_SOURCE), _enumerated("mimeType", SCAN_MIME),
        Argument("features", "features"), _PAGES),
        "shortcutType: {shortcutType}, shortcutVarianceType: {shortcutVarianceType}, itemType: {itemType}, "
        "resolutionType: {resolutionType}, colorModeType: {colorModeType}, pageSizeType: {pageSizeType}, "
        "sourceType: {sourceType}, mimeType: {mimeType}, features: {features}, pages: {pages}",
        (("scan_acquire_shortcut", "shortcutType"), ("scan_acquire_shortcut_variance", "shortcutVarianceType"),
         ("scan_acquire_itemtype", "itemType"), ("scan_acquire_resolution", "resolutionType"),
         ("scan_acquire_colormode", "colorModeType"), ("scan_acquire_pagesize", "pageSizeType"),
         ("scan_acquire_source", "sourceType"), ("scan_acquire_mimetype", "mimeType"),
         ("scan_acquire_features", "features"), ("scan_acquire_pages", "pages")),
        "mimeType sourceType pageSizeType colorModeType resolutionType itemType shortcutVarianceType shortcutType",
        "pages"),
    *_pair("PrintBasic", "task_print_basic", "app_event_task_print_basic/1.0.0", (
        _enumerated("subsystemType", PRINT_SUBSYSTEM), _enumerated("itemType", PRINT_ITEM),
        _enumerated("mimeType", PRINT_MIME), _enumerated("pageSizeType", PRINT_PAGE), _required("paperSize"), _PAGES),
        "subsystemType: {subsystemType}, itemType: {itemType}, mimeType: {mimeType}, pageSizeType: {pageSizeType}, "
        "paperSize: {paperSize}, pages: {pages}",
        (("print_basic_subsystem", "subsystemType"), ("print_basic_type", "itemType"),
         ("print_basic_mimetype", "mimeType"), ("print_basic_size", "pageSizeType"),
         ("print_basic_papersize", "paperSize"), ("print_basic_pages", "pages")),
        "pageSizeType mimeType itemType subsystemType", "paperSize pages"),
    *_pair("FileSendTo", "task_file_sendto", "app_event_task_file_sendto/1.0.0", (
        _enumerated("shortcutType", FILE_SHORTCUT), _enumerated("shortcutVarianceType", FILE_VARIANCE),
        _enumerated("mimeType", FILE_MIME), _enumerated("destinationType", FILE_DESTINATION), _PAGES),
        "shortcutType: {shortcutType}, shortcutVarianceType: {shortcutVarianceType}, mimeType: {mimeType}, "
        "destinationType: {destinationType}, pages: {pages}",
        (("scan_sendto_shortcut", "shortcutType"), ("scan_sendto_shortcut_variance", "shortcutVarianceType"),
         ("scan_sendto_mimetype", "mimeType"), ("scan_sendto_destination", "destinationType"),
         ("scan_sendto_pages", "pages")),
        "destinationType mimeType shortcutVarianceType shortcutType", "pages"),
    *_pair("DeviceConnect", "task_device_connect", "app_event_task_device_connect/1.0.0", (
        _enumerated("scenarioType", SCENARIO), _enumerated("methodType", METHOD)),
        "scenarioType: {scenarioType}, methodType: {methodType}",
        (("connect_scenario", "scenarioType"), ("connect_method", "methodType")), "methodType scenarioType"),
    *_pair("DeviceConfig", "task_device_config", "app_event_task_device_config/1.0.0", (
        _enumerated("settingType", SETTING),),
        "settingType: {settingType}", (("config_setting", "settingType"),), "settingType"),
    *_pair("SoftwareInstall", "task_sw_install", "app_event_task_sw_install/1.0.0", (
        _enumerated("installerType", INSTALL), _required("name", "installName"),
        _required("version", "installVersion")),
        "installerType: {installerType}, name: {name}, version: '{version}'",
        (("install_type", "installerType"), ("install_name", "name"), ("install_version", "version")),
        "installerType", "name version"),
    Export("TrackDiscoveredPrintersEx", "printers", (Argument("discoveredDeviceList", "devices"),),
           "discoveredDeviceList: {discoveredDeviceList}"),
    Export("GetBiid", "biid", (Argument("deviceUuid", "narrow"), Argument("biid", "result")),
           'deviceUuid: "{deviceUuid}"'),
    Export("GetBiid_Internal", "plain", (
        Argument("buffer", "buffer"), Argument("size", "size"), Argument("deviceUuid", "narrow")), "",
        {"of": "GetBiid", "passes": "deviceUuid"}),
    Export("ToString", "to_string", (_enumerated("enumValue", METHOD), Argument("textValue", "result")),
           "enumValue: {enumValue} ({enumValue_number})"),
    Export("ToString_Internal", "plain", (
        Argument("buffer", "buffer"), Argument("size", "size"), _enumerated("enumValue", METHOD)), "",
        {"of": "ToString", "passes": "enumValue"}),
)

EXPORTS = {export.name: export for export in _ALL}
