"""The first sample session, compared whole on both roads."""

import unittest

from support import ROOT, LogLine, SessionTestCase, error, record, trace

MODEL = "Model 8100"
CHOOSE_NETWORK = "/setup.flow/network/wireless/ChooseNetwork-first_run"
SPRING_AD = {
    "schema": "generic/1.0.0",
    "moniker": "x-dvrn_ad_basic/1.0",
    "campaign_type": "banner",
    "campaign_product": "Ink at your door",
    "campaign_name": "Spring",
    "campaign_variant": "unknown",
}

RECORDS = [
    record("app", "displayed", "screen", "/Welcome", model=MODEL),
    record("app", "displayed", "screen", CHOOSE_NETWORK, model=MODEL, local={"networks_found": "7", "signal": "good"}),
    record("user", "clicked", "button", CHOOSE_NETWORK + "#connect", model=MODEL),
    record("user", "checked", "checkbox", "/setup.flow/Consent#send-usage-data", model=MODEL),
    record("user", "unchecked", "checkbox", "/setup.flow/Consent#send-usage-data", model=MODEL),
    record("user", "clicked", "tile", "/Home#scan", model="Model 400"),
    record("user", "clicked", "hyperlink", "/Home-online#url_help", model=MODEL),
    record("app", "launched", "url", "https://support.example/printers/setup", model=MODEL),
    record("user", "submitted", "form", "form_generic", model=MODEL, details={
        "schema": "app_event_form_generic/1.0.0", "moniker": "x-dvrn_tarvik_form_register/1.0",
        "country": "Österreich", "newsletter": "false"}),
    record("app", "generated", "report", "report_generic", model=MODEL, details={
        "schema": "app_event_report_generic/1.0.0", "moniker": "x-dvrn_tarvik_report_setup/1.0",
        "steps_done": "9", "minutes": "4"}),
    record("app", "displayed", "ad", "/Home#ad", SPRING_AD, model=MODEL),
    record("user", "clicked", "ad", "/Home#ad", SPRING_AD, model=MODEL),
    record("user", "closed", "ad", "/Home#ad", SPRING_AD, model=MODEL),
    record("user", "clicked", "button", "/Summary#finish", model=MODEL),
]

AD_LINE = ('product: "Ink at your door", name: "Spring", variant: "", flow: (null), screenPath: (null), '
           'screenName: "Home", mode: (null), controlName: "ad", localContext: (null), globalContext: (null)')
SPACED = "a " * 100

LOG = [
    LogLine("TRACE", "", "Logger: LogLevel='trace'"),
    LogLine("TRACE", "", "Logger: Log='on'"),
    LogLine("TRACE", "", "Logger: Logging is on by default until 2017-07-07T00:00:00Z"),
    LogLine("TRACE", "", "Logger: Logging is currently ENABLED"),
    trace("SetGlobalContextEx", 'globalContext: "Model 8100"'),
    trace("ScreenDisplayed", 'flow: (null), screenPath: (null), screenName: "Welcome", mode: (null), '
          'localContext: (null), globalContext: (null)'),
    trace("ScreenDisplayed", 'flow: "setup", screenPath: "network/wireless", screenName: "ChooseNetwork", '
          'mode: "first_run", localContext: [2 item(s)], globalContext: (null)'),
    trace("ButtonClicked", 'flow: "setup", screenPath: "network/wireless", screenName: "ChooseNetwork", '
          'mode: "first_run", controName: "connect", localContext: (null), globalContext: (null)'),
    trace("CheckboxChanged", 'isChecked: 1, flow: "setup", screenPath: (null), screenName: "Consent", mode: (null), '
          'controlName: "send-usage-data", localContext: (null), globalContext: (null)'),
    trace("CheckboxChanged", 'isChecked: 0, flow: "setup", screenPath: (null), screenName: "Consent", mode: (null), '
          'controlName: "send-usage-data", localContext: (null), globalContext: (null)'),
    trace("TileClicked", 'flow: (null), screenPath: (null), screenName: "Home", mode: (null), controName: "scan", '
          'localContext: (null), globalContext: "Model 400"'),
    trace("HyperlinkClicked", 'flow: (null), screenPath: (null), screenName: "Home", mode: "online", '
          'controName: "help", localContext: (null), globalContext: (null)'),
    trace("UrlLaunchedEx", 'url: "https://support.example/printers/setup?serial=CN1234&user=ann", '
          'localContext: (null), globalContext: (null)'),
    trace("FormSubmitted", 'orgName: "dvrn", codeName: "tarvik", formName: "register", version: "1.0", '
          'details: [2 item(s)], localContext: (null), globalContext: (null)'),
    trace("ReportGenerated", 'orgName: "dvrn", codeName: "tarvik", reportName: "setup", version: "1.0", '
          'details: [2 item(s)], localContext: (null), globalContext: (null)'),
    trace("AdDisplayed", "adType: banner, " + AD_LINE),
    trace("AdClicked", "adType: banner, " + AD_LINE),
    trace("AdClosed", "adType: banner, " + AD_LINE),
    trace("ButtonClicked", 'flow: "set up", screenPath: "network//wireless", screenName: "", mode: "", '
          'controName: "-", localContext: (null), globalContext: "line\\nfeed"'),
    error("ButtonClicked", 'invalid [optional] flow arg: "set up"'),
    error("ButtonClicked", 'invalid [optional] screenPath arg: "network//wireless"'),
    error("ButtonClicked", 'invalid [REQUIRED] screenName arg: ""'),
    error("ButtonClicked", 'invalid [optional] mode arg: ""'),
    error("ButtonClicked", 'invalid [REQUIRED] controlName arg: "-"'),
    error("ButtonClicked", 'invalid [optional] globalContext arg: "line\\nfeed"'),
    trace("UrlLaunchedEx", 'url: "ftp://support.example/", localContext: (null), globalContext: (null)'),
    error("UrlLaunchedEx", 'invalid [REQUIRED] urlNoPii arg: "ftp://support.example/"'),
    trace("FormSubmitted", 'orgName: "DVRN", codeName: "tarvik", formName: "register", version: "1", '
          'details: [0 item(s)], localContext: (null), globalContext: (null)'),
    error("FormSubmitted", 'invalid [REQUIRED] orgName arg: "DVRN"'),
    error("FormSubmitted", 'invalid [REQUIRED] version arg: "1"'),
    trace("AdDisplayed", "adType: [Undefined AdType value: 9], " + AD_LINE),
    error("AdDisplayed", "[Undefined AdType: 9]", title="Exception"),
    trace("HyperlinkClicked", 'flow: (null), screenPath: (null), screenName: "Home", mode: "on_line", '
          'controName: "help", localContext: (null), globalContext: (null)'),
    error("HyperlinkClicked", "objectLabel is not formatted correctly. Must be of form "
          "[/<Flow>.flow][/<ScreenPath>]/<ScreenName>[-<Mode>]#url_<ControlName>", title="Exception"),
    trace("SetGlobalContextEx", 'globalContext: ""'),
    error("SetGlobalContextEx", 'invalid [REQUIRED] globalContext arg: ""'),
    trace("ButtonClicked", f'flow: (null), screenPath: (null), screenName: "{SPACED}", mode: (null), '
          f'controName: "{"a" * 40}\\n", localContext: (null), globalContext: (null)'),
    error("ButtonClicked", f'invalid [REQUIRED] screenName arg: "{SPACED}"'),
    error("ButtonClicked", f'invalid [REQUIRED] controlName arg: "{"a" * 40}\\n"'),
    trace("ButtonClicked", 'flow: (null), screenPath: (null), screenName: "Summary", mode: (null), '
          'controName: "finish", localContext: (null), globalContext: (null)'),
    trace("ToString", "enumValue: auto_wireless_connect (2)"),
    trace("ToString", '...returns textValue: "auto_wireless_connect"'),
    trace("ToString", "enumValue: [Undefined ConnectionMethodType value: 99] (99)"),
    trace("ToString", '...returns textValue: "[Undefined ConnectionMethodType value: 99]"'),
    trace("ToString", "enumValue: wifi_direct (11)"),
    trace("ToString", '...returns textValue: "wifi_direct"'),
]

ANSWERS = [
    *({"call": name} for name in (
        "SetGlobalContextEx", "ScreenDisplayed", "ScreenDisplayed", "ButtonClicked", "CheckboxChanged",
        "CheckboxChanged", "TileClicked", "HyperlinkClicked", "UrlLaunchedEx", "FormSubmitted", "ReportGenerated",
        "AdDisplayed", "AdClicked", "AdClosed", "ButtonClicked", "UrlLaunchedEx", "FormSubmitted", "AdDisplayed",
        "HyperlinkClicked", "SetGlobalContextEx", "ButtonClicked", "ButtonClicked")),
    {"call": "ToString", "returns": "auto_wireless_connect"},
    {"call": "ToString", "returns": "[Undefined ConnectionMethodType value: 99]"},
    {"call": "ToString_Internal", "returns": {"result": 0, "text": "wifi_direct"}},
]


class FirstLight(SessionTestCase):
    def play_on(self, road: str):
        session = (ROOT / "samples" / "sessions" / "first-light.jsonl").read_text(encoding="utf-8")
        outcome = self.play_text(session, road=road)
        self.assertEqual((0, ""), (outcome.status, outcome.errors))
        self.assertEqual(ANSWERS, outcome.host)
        self.assertEqual(LOG, outcome.log)
        self.assertEqual([line for line in LOG if line.severity == "ERROR"], outcome.error_file)
        return outcome

    def test_managed_road_hands_every_accepted_call_over(self):
        outcome = self.play_on("managed")
        self.assertEqual(["PostEventInternal"] * len(RECORDS), [line["operation"] for line in outcome.companion])
        self.assertEqual(RECORDS, outcome.records)
        self.assertEqual({"host.jsonl", "companion.jsonl", "Lumeq.Log.txt", "Lumeq.Error.txt"}, set(outcome.files))

    def test_basic_road_drops_every_event_without_a_word(self):
        outcome = self.play_on("basic")
        self.assertEqual({"host.jsonl", "Lumeq.Log.txt", "Lumeq.Error.txt"}, set(outcome.files))

    def test_timestamps_are_those_of_the_calls(self):
        outcome = self.play({"call": "ScreenDisplayed", "screenName": "First"}, {"sleepMsec": 200},
                            {"call": "ScreenDisplayed", "screenName": "Second"})
        first, second = (line["timestamp"] for line in outcome.companion)
        self.assertTrue(190 <= second - first < 5000, (first, second))


if __name__ == "__main__":
    unittest.main()
