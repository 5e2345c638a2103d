"""The numbers that a host passes for enumerated values, with their texts in the log and what goes out for them."""

import unittest
from typing import NamedTuple

from support import SessionTestCase, call, error, record, trace
from task_support import (CONFIG, CONNECT, INSTALL, PRINT, SCAN, SEND, Pair, completed, completed_line, completed_record,
                          initiated, initiated_record, masked, refusal, task_records)


class Enumeration(NamedTuple):
    thrown: str
    """Names it in the report of an undefined value."""
    texts: list[str]
    """By number."""
    named: str = ""
    """Names it where an undefined value's text would stand, if that is another name."""

    def undefined(self) -> list[tuple[int, str, str]]:
        """The numbers beside the defined ones, with what the log's line and the report have for them."""
        return [(number, f"[Undefined {self.named or self.thrown} value: {number}]", f"[Undefined {self.thrown}: {number}]")
                for number in (-1, len(self.texts))]


SHORTCUTS = ["unknown", "email_jpg", "email_pdf", "every_day_scan", "save_jpg", "save_pdf", "save_text", "send_cloud",
             "user"]
VARIANCES = ["unknown", "modified", "modified_one_off", "original", "original_one_off", "user", "user_one_off"]

METHODS = Enumeration("ConnectionMethodType", [
    "unknown", "already_on_network", "auto_wireless_connect", "ethernet", "frontpanel_setup_of_wireless", "later",
    "press_wireless_button", "usb", "usb_plus_wifi", "usb_setup_of_wireless", "usb_to_wifi", "wifi_direct"])
ADS = Enumeration("AdType", ["unknown", "banner", "hyperlink", "tile", "virtualalert"])


class Start(NamedTuple):
    text: str
    sent: int
    """The number that goes out in its place."""


HOWS = [Start("unknown", 9), Start("cd_exe", 0), Start("desktop_shortcut", 1), Start("desktop_toast", 2),
        Start("dxp_link", 3), Start("folder_exe", 4), Start("pnp_inf", 5), Start("smv_link", 6),
        Start("startmenu_shortcut", 7), Start("udc_tile", 8)]
WHYS = [Start("unknown", 4), Start("add_device", 0), Start("add_software", 1), Start("reconfigure_device", 2),
        Start("start_app", 3), Start("view_device", 5), Start("view_device_error", 6), Start("view_device_supplies", 7)]


class Argument(NamedTuple):
    name: str
    key: str
    """Of the record's field."""
    enumeration: Enumeration


SCAN_ARGUMENTS = [
    Argument("shortcutType", "scan_acquire_shortcut", Enumeration("Scan::ShortcutType", SHORTCUTS)),
    Argument("shortcutVarianceType", "scan_acquire_shortcut_variance", Enumeration("Scan::ShortcutVarianceType", VARIANCES)),
    Argument("itemType", "scan_acquire_itemtype", Enumeration("Scan::ItemType", ["unknown", "document", "photo"])),
    Argument("resolutionType", "scan_acquire_resolution", Enumeration("Scan::ResolutionType", [
        "unknown", "dpi_75", "dpi_100", "dpi_200", "dpi_240", "dpi_300", "dpi_400", "dpi_500", "dpi_600", "dpi_1200",
        "dpi_2400", "dpi_4800"])),
    # The line of the log leaves the scope out here, and only here.
    Argument("colorModeType", "scan_acquire_colormode", Enumeration("Scan::ColorModeType", [
        "unknown", "auto", "blackwhite", "color", "gray", "halftone"], named="ColorModeType")),
    Argument("pageSizeType", "scan_acquire_pagesize", Enumeration("Scan::PageSizeType", [
        "unknown", "a4", "auto", "custom", "entirearea", "extralong", "legal", "letter", "long", "size_4x6", "size_5x7",
        "size_8x10", "snap"])),
    Argument("sourceType", "scan_acquire_source", Enumeration("Scan::SourceType", [
        "unknown", "adf_duplex_book", "adf_duplex_tablet", "adf_simplex", "flatbed"])),
    Argument("mimeType", "scan_acquire_mimetype", Enumeration("Scan::MimeType", [
        "unknown", "application/pdf", "application/pdfsearchable", "application/rtf", "image/bmp", "image/jpg",
        "image/png", "image/tiff", "text/ansi", "text/unicode", "text/utf8"])),
]
PRINT_ARGUMENTS = [
    Argument("subsystemType", "print_basic_subsystem", Enumeration("Print::SubsystemType", ["unknown", "ipp", "native"])),
    Argument("itemType", "print_basic_type", Enumeration("Print::ItemType", [
        "unknown", "document", "photo/multi", "photo/single"])),
    Argument("mimeType", "print_basic_mimetype", Enumeration("Print::MimeType", ["unknown", "application/pdf", "image/*"])),
    Argument("pageSizeType", "print_basic_size", Enumeration("Print::PageSizeType", [
        "unknown", "full", "size_3p5x5", "size_4x6", "size_5x7", "size_8x10", "size_9x13_cm", "size_10x15_cm",
        "size_13x18_cm"])),
]
SEND_ARGUMENTS = [
    Argument("shortcutType", "scan_sendto_shortcut", Enumeration("File::ShortcutType", SHORTCUTS)),
    Argument("shortcutVarianceType", "scan_sendto_shortcut_variance", Enumeration("File::ShortcutVarianceType", VARIANCES)),
    Argument("mimeType", "scan_sendto_mimetype", Enumeration("File::MimeType", [
        "unknown", "application/pdf", "application/pdfsearchable", "image/jpg", "image/bmp", "image/tiff", "image/png",
        "application/rtf", "text/unicode", "text/ansi", "text/utf8"])),
    Argument("destinationType", "scan_sendto_destination", Enumeration("File::DestinationType", [
        "unknown", "cloud_box", "cloud_dropbox", "cloud_googledrive", "cloud_onedrive", "email_mapi", "email_smtp",
        "folder"])),
]
CONNECT_ARGUMENTS = [
    Argument("scenarioType", "connect_scenario", Enumeration("ConnectionScenarioType", [
        "unknown", "add", "connect", "convert", "reconfigure"])),
    Argument("methodType", "connect_method", METHODS),
]
CONFIG_ARGUMENTS = [Argument("settingType", "config_setting", Enumeration("ConfigurationSettingType", [
    "unknown", "pbut_consent_enable", "webservices_registration"]))]
INSTALL_ARGUMENTS = [Argument("installerType", "install_type", Enumeration("InstallType", ["unknown", "exe", "msi"]))]


class Tasks(SessionTestCase):
    def check(self, pair: Pair, arguments: list[Argument]):
        """First all arguments go through their defined values side by side, then each one passes its ends."""
        steps, records, lines = [], [], []
        for turn in range(max(len(argument.enumeration.texts) for argument in arguments)):
            numbers = {argument.name: turn % len(argument.enumeration.texts) for argument in arguments}
            texts = {argument.name: argument.enumeration.texts[numbers[argument.name]] for argument in arguments}
            steps += [initiated(pair), completed(pair, **numbers)]
            records += [initiated_record(pair),
                        completed_record(pair, details={argument.key: texts[argument.name] for argument in arguments})]
            lines.append(completed_line(pair, **texts))
        steps.append(initiated(pair))
        records.append(initiated_record(pair))
        for argument in arguments:
            for number, text, thrown in argument.enumeration.undefined():
                steps.append(completed(pair, **{argument.name: number}))
                lines += [completed_line(pair, **{argument.name: text}), refusal(pair, thrown, title="Exception")]
        outcome = self.play_to_end(*steps)
        self.assertEqual(records, task_records(outcome))
        self.assertEqual(lines, [line for line in masked(outcome.calls) if not line.function.endswith("Initiated")])

    def test_scan_acquire(self):
        self.check(SCAN, SCAN_ARGUMENTS)

    def test_print_basic(self):
        self.check(PRINT, PRINT_ARGUMENTS)

    def test_file_send_to(self):
        self.check(SEND, SEND_ARGUMENTS)

    def test_device_connect(self):
        self.check(CONNECT, CONNECT_ARGUMENTS)

    def test_device_config(self):
        self.check(CONFIG, CONFIG_ARGUMENTS)

    def test_software_install(self):
        self.check(INSTALL, INSTALL_ARGUMENTS)


class Ads(SessionTestCase):
    ACTIONS = (("AdDisplayed", "app", "displayed"), ("AdClicked", "user", "clicked"), ("AdClosed", "user", "closed"))

    def test_every_type_of_every_ad_export(self):
        def ad(export: str, number: int) -> dict:
            return call(export, adType=number, product="P", name="N", variant="V", screenName="Home", controlName="ok")

        def line(export: str, text: str):
            return trace(export, f'adType: {text}, product: "P", name: "N", variant: "V", flow: (null), screenPath: (null), '
                         'screenName: "Home", mode: (null), controlName: "ok", localContext: (null), globalContext: (null)')

        steps, records, lines = [], [], []
        for export, actor, action in self.ACTIONS:
            for number, text in enumerate(ADS.texts):
                steps.append(ad(export, number))
                records.append(record(actor, action, "ad", "/Home#ok", {
                    "schema": "generic/1.0.0", "moniker": "x-dvrn_ad_basic/1.0", "campaign_type": text,
                    "campaign_product": "P", "campaign_name": "N", "campaign_variant": "V"}))
                lines.append(line(export, text))
            for number, text, thrown in ADS.undefined():
                steps.append(ad(export, number))
                lines += [line(export, text), error(export, thrown, title="Exception")]
        outcome = self.play_to_end(*steps)
        self.assertEqual(records, outcome.records)
        self.assertEqual(lines, outcome.calls)


class Starts(SessionTestCase):
    @staticmethod
    def start(why: int, how: int) -> dict:
        return call("StartupEx", appName="App", whyType=why, howType=how, trackSystemInfo=False, trackPrintQueueInfo=True)

    @staticmethod
    def line(why: str, how: str):
        return trace("StartupEx", f'appName: "App", whyType: {why}, howType: {how}, trackSystemInfo: 0, trackPrintQueueInfo: 1')

    def test_other_numbers_go_out_than_the_host_passed(self):
        turns = [(number % len(WHYS), number) for number in range(len(HOWS))]
        outcome = self.play_to_end(*(self.start(*turn) for turn in turns))
        self.assertEqual([{"operation": "StartupInternal", "appName": "App", "howType": HOWS[how].sent,
                           "whyType": WHYS[why].sent, "trackSystemInfo": False, "trackPrintQueueInfo": True}
                          for why, how in turns], outcome.companion)
        self.assertEqual([self.line(WHYS[why].text, HOWS[how].text) for why, how in turns], outcome.calls)

    def test_undefined_ones_start_nothing_and_the_reason_is_told_before_the_way(self):
        outcome = self.play_to_end(self.start(-1, 0), self.start(8, 0), self.start(0, -1), self.start(0, 10), self.start(8, 10))

        def reported(thrown: str):
            return error("StartupEx", thrown, title="Exception")

        self.assertEqual([
            self.line("[Undefined WhyType value: -1]", "unknown"), reported("[Undefined WhyType: -1]"),
            self.line("[Undefined WhyType value: 8]", "unknown"), reported("[Undefined WhyType: 8]"),
            self.line("unknown", "[Undefined HowType value: -1]"), reported("[Undefined HowType: -1]"),
            self.line("unknown", "[Undefined HowType value: 10]"), reported("[Undefined HowType: 10]"),
            self.line("[Undefined WhyType value: 8]", "[Undefined HowType value: 10]"), reported("[Undefined WhyType: 8]"),
        ], outcome.calls)
        self.assertEqual([], outcome.companion)


class Texts(SessionTestCase):
    def test_told_by_number_and_an_undefined_number_is_no_error(self):
        texts = [*enumerate(METHODS.texts), (-1, "[Undefined ConnectionMethodType value: -1]"),
                 (12, "[Undefined ConnectionMethodType value: 12]"),
                 (-2147483648, "[Undefined ConnectionMethodType value: -2147483648]")]
        outcome = self.play_to_end(*(step for number, _ in texts for step in (
            call("ToString", enumValue=number, textValue="before"), call("ToString_Internal", enumValue=number, buffer="before"))))
        self.assertEqual([line for _, text in texts for line in (
            {"call": "ToString", "returns": text},
            {"call": "ToString_Internal", "returns": {"result": 0, "text": text}})], outcome.host)
        # Both log under the one name.
        self.assertEqual([line for number, text in texts for line in (
            trace("ToString", f"enumValue: {text} ({number})"), trace("ToString", f'...returns textValue: "{text}"')) * 2],
            outcome.calls)


if __name__ == "__main__":
    unittest.main()
