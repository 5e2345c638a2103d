"""The registry switch, read once per process."""

import unittest

from support import LogLine, SessionTestCase, call, record, trace

SCREEN = call("ScreenDisplayed", screenName="Home")

# Every export once, good and bad arguments mixed.
EVERY_EXPORT = [
    call("StartupEx", appName="App", whyType=99, howType=1, trackSystemInfo=True, trackPrintQueueInfo=True),
    call("ShutdownEx", timeoutMsec=-1),
    call("FlushEx", timeoutMsec=-1),
    call("Pause"),
    call("Resume"),
    call("SetUserOptInEx", userHasOptedIn=True),
    call("GetUserOptInEx"),
    call("SetLocalSubfolderPathEx", subpath="a*b"),
    call("TrackPrintQueueInfoEx"),
    call("TrackSystemInformationEx"),
    call("SetGlobalContextEx", globalContext=""),
    SCREEN,
    call("ButtonClicked", screenName="", controlName=""),
    call("TileClicked", screenName="Home", controlName="ok"),
    call("HyperlinkClicked", screenName="Home", controlName="ok"),
    call("CheckboxChanged", isChecked=1, screenName="Home", controlName="ok"),
    *(call(name, adType=99, product="p", name="n", variant="v", screenName="Home", controlName="ok")
      for name in ("AdDisplayed", "AdClicked", "AdClosed")),
    call("UrlLaunchedEx", url="nothing"),
    call("FormSubmitted", orgName="o", codeName="c", formName="f", version="1.0", details={}),
    call("ReportGenerated", orgName="o", codeName="c", reportName="r", version="1.0", details={}),
    *(call(name + "Initiated", handle="h", globalContext="")
      for name in ("ScanAcquire", "PrintBasic", "FileSendTo", "DeviceConnect", "DeviceConfig", "SoftwareInstall")),
    call("ScanAcquireCompleted", taskHandle="h", taskResult="success", shortcutType=0, shortcutVarianceType=0,
         itemType=0, resolutionType=0, colorModeType=0, pageSizeType=0, sourceType=0, mimeType=0, features={}, pages=-1),
    call("PrintBasicCompleted", taskHandle="h", taskResult="success", subsystemType=0, itemType=0, mimeType=0,
         pageSizeType=0, paperSize="", pages=0),
    call("FileSendToCompleted", taskHandle="h", taskResult="", shortcutType=0, shortcutVarianceType=0, mimeType=0,
         destinationType=0, pages=0),
    call("DeviceConnectCompleted", taskHandle="h", taskResult="", scenarioType=0, methodType=0),
    call("DeviceConfigCompleted", taskHandle="h", taskResult="", settingType=0),
    call("SoftwareInstallCompleted", taskHandle="h", taskResult="", installerType=0, name="", version=""),
    call("TrackDiscoveredPrintersEx", discoveredDeviceList=[{"dev_biid": "unknown"}, {}]),
    call("GetBiid", deviceUuid="", biid="as before"),
    call("GetBiid_Internal", deviceUuid="abc", buffer="as before"),
    call("ToString", enumValue=1, textValue="as before"),
    call("ToString_Internal", enumValue=1, buffer="as before"),
]

ANSWERS = {
    "GetUserOptInEx": {"returns": False},
    "GetBiid": {"returns": "as before"},
    "GetBiid_Internal": {"returns": {"result": 0, "text": ""}},
    "ToString": {"returns": "as before"},
    "ToString_Internal": {"returns": {"result": 0, "text": ""}},
}


class TrackingGate(SessionTestCase):
    def test_disabled_tracking_leaves_no_trace_of_any_export(self):
        self.assertEqual(39, len({step["call"] for step in EVERY_EXPORT}))
        for road in ("managed", "basic"):
            with self.subTest(road):
                outcome = self.play(*EVERY_EXPORT, disabled=1, road=road, log="debug")
                self.assertEqual((0, ""), (outcome.status, outcome.errors))
                handles = {step["call"]: {"handle": "null"} for step in EVERY_EXPORT
                           if "handle" in step or "taskHandle" in step}
                self.assertEqual([{"call": step["call"], **{**handles, **ANSWERS}.get(step["call"], {})}
                                  for step in EVERY_EXPORT], outcome.host)
                self.assertEqual({"host.jsonl"}, set(outcome.files))

    def assert_enabled(self, **conditions):
        outcome = self.play(SCREEN, **conditions)
        self.assertEqual([record("app", "displayed", "screen", "/Home")], outcome.records)
        self.assertEqual([trace("ScreenDisplayed", 'flow: (null), screenPath: (null), screenName: "Home", mode: (null), '
                                'localContext: (null), globalContext: (null)')], outcome.calls)

    def test_missing_key_means_enabled(self):
        self.assert_enabled()

    def test_zero_means_enabled(self):
        self.assert_enabled(disabled=0)

    def test_two_means_enabled(self):
        self.assert_enabled(disabled=2)


class GlobalContext(SessionTestCase):
    def test_refused_value_leaves_the_earlier_one_in_force(self):
        outcome = self.play(call("SetGlobalContextEx", globalContext="First"),
                            call("SetGlobalContextEx", globalContext="line\nfeed"), SCREEN)
        self.assertEqual([record("app", "displayed", "screen", "/Home", model="First")], outcome.records)

    def test_128_characters_are_the_most(self):
        outcome = self.play(call("SetGlobalContextEx", globalContext={"repeat": "x", "times": 128}),
                            call("SetGlobalContextEx", globalContext={"repeat": "y", "times": 129}), SCREEN)
        self.assertEqual([record("app", "displayed", "screen", "/Home", model="x" * 128)], outcome.records)
        self.assertEqual(
            [LogLine("ERROR", "", "lumeq-host.exe: Validation failed in Zuvan::Lumeq::API::SetGlobalContextEx: "
                     f'invalid [REQUIRED] globalContext arg: "{"y" * 129}". LumeqApi(line)')], outcome.error_file)

    def test_value_of_the_call_goes_before_that_of_the_process(self):
        outcome = self.play(call("SetGlobalContextEx", globalContext="Process"),
                            call("ScreenDisplayed", screenName="Home", globalContext="Call"), SCREEN)
        self.assertEqual(["Call", "Process"],
                         [event["app_event_context"]["context_global"]["_dev_modelname"] for event in outcome.records])


if __name__ == "__main__":
    unittest.main()
