"""What the model of the exported rules predicts, in cases worked out by hand."""

import unittest
from typing import Optional

from circumstances import Circumstances
from session_model import Prediction, predict
from settings_files import SettingsFile


def call(export: str, /, **arguments) -> dict:
    return {"call": export, **arguments}


def start(name: str = "App", why: int = 0, how: int = 0) -> dict:
    return call("StartupEx", appName=name, whyType=why, howType=how, trackSystemInfo=True, trackPrintQueueInfo=False)


def button(**arguments) -> dict:
    return call("ButtonClicked", **{"screenName": "Home", "controlName": "ok", **arguments})


def install(result: str = "success", **others) -> dict:
    return call("SoftwareInstallCompleted", **{
        "taskHandle": "h", "taskResult": result, "installerType": 2, "name": "Setup", "version": "1.2.3", **others})


def errors(prediction: Prediction) -> list[str]:
    """Without the text around each."""
    return [line.messages[0].removeprefix("lumeq-host.exe: ").removesuffix(". LumeqApi(0)")
            for line in prediction.log if line.severity == "ERROR"]


def warnings(prediction: Prediction) -> list[str]:
    return [line.messages[0] for line in prediction.log if line.severity == "WARNING"]


def labels(prediction: Prediction) -> list[str]:
    return [operation["record"]["app_event_object_label"] for operation in prediction.operations
            if operation["operation"] == "PostEventInternal"]


def played(*steps: dict, **circumstances) -> Prediction:
    return predict(list(steps), Circumstances(**circumstances))


def settings(prediction: Prediction, place: str = "programdata\\zuvan\\lumeq") -> Optional[dict]:
    found = prediction.settings.get(place)
    return found and dict(found[2])


API = "Zuvan::Lumeq::API::"


class Events(unittest.TestCase):
    def test_label_of_a_control_holds_all_its_parts_in_order(self):
        self.assertEqual(["/setup.flow/a/b_/Home-edit_2#ok-button", "/Home#ok"], labels(played(
            button(flow="setup", screenPath="a/b_", mode="edit_2", controlName="ok-button"),
            button(flow="", screenPath=""))))

    def test_hyperlink_is_checked_once_more(self):
        link = {**button(mode="a_b"), "call": "HyperlinkClicked"}
        self.assertEqual([
            f"Exception in {API}HyperlinkClicked: objectLabel is not formatted correctly. Must be of form "
            "[/<Flow>.flow][/<ScreenPath>]/<ScreenName>[-<Mode>]#url_<ControlName>"], errors(played(link)))
        self.assertEqual(["/Home-ab#url_ok"], labels(played({**link, "mode": "ab"})))

    def test_every_bad_argument_is_an_error_of_its_own(self):
        failed = f"Validation failed in {API}ButtonClicked: invalid "
        self.assertEqual([failed + '[optional] flow arg: "a b"', failed + '[REQUIRED] screenName arg: ""',
                          failed + '[optional] mode arg: ""', failed + '[optional] globalContext arg: ""'],
                         errors(played(button(flow="a b", screenName="", mode="", globalContext=""))))

    def test_model_name_of_the_call_comes_before_that_of_all_calls(self):
        prediction = played(call("SetGlobalContextEx", globalContext="all"), button(globalContext="one"), button(),
                            call("SetGlobalContextEx", globalContext="\n"), button(localContext={}))
        contexts = [operation["record"]["app_event_context"] for operation in prediction.operations]
        self.assertEqual(["one", "all", "all"], [context["context_global"]["_dev_modelname"] for context in contexts])
        self.assertEqual([None, None, {}], [context["context_local"] for context in contexts])

    def test_url_goes_out_without_its_query(self):
        url = "https://u@h/p#f"
        self.assertEqual([url], labels(played(call("UrlLaunchedEx", url=url + "?q"),
                                              call("UrlLaunchedEx", url="HTTP://a"))))
        self.assertEqual([f"Exception in {API}UrlLaunchedEx: bad conversion"],
                         errors(played(call("UrlLaunchedEx", url=["file://", {"units": [0xD800]}]))))

    def test_blank_ad_texts_become_unknown(self):
        prediction = played(call("AdClosed", adType=1, product="", name="\u00a0", variant="v", screenName="a",
                                 controlName="b"))
        self.assertEqual({"schema": "generic/1.0.0", "moniker": "x-dvrn_ad_basic/1.0", "campaign_type": "banner",
                          "campaign_product": "unknown", "campaign_name": "unknown", "campaign_variant": "v"},
                         prediction.operations[0]["record"]["app_event_details"])


class Tasks(unittest.TestCase):
    def test_completed_task_is_gone_and_one_that_is_refused_stays(self):
        prediction = played(call("SoftwareInstallInitiated", handle="h"), install("error_a"), install("error_ab"),
                            install())
        self.assertEqual(["set", "set", "null", "null"], [answer["handle"] for answer in prediction.answers])
        self.assertEqual([
            f"Exception in {API}SoftwareInstallCompleted: Task result is not formatted correctly. Must be of form "
            "success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?)",
            f"Validation failed in {API}SoftwareInstallCompleted: null taskHandle arg"], errors(prediction))
        first, second = (operation["record"] for operation in prediction.operations)
        self.assertIs(first["app_event_context"]["context_local"]["_app_event_task_guid"],
                      second["app_event_context"]["context_local"]["_app_event_task_guid"])
        self.assertEqual(("msi", "error_ab"), (second["app_event_details"]["install_type"],
                                               second["app_event_details"]["task_result"]))

    def test_first_undefined_value_hides_the_others(self):
        steps = [call("DeviceConnectInitiated", handle="h"),
                 call("DeviceConnectCompleted", taskHandle="h", taskResult="success", scenarioType=-1, methodType=12)]
        self.assertEqual([f"Exception in {API}DeviceConnectCompleted: [Undefined ConnectionMethodType: 12]"],
                         errors(played(*steps)))

    def test_version_stands_in_both_kinds_of_quotation_marks(self):
        self.assertEqual('taskHandle: 0x0000000000000000, taskResult: "success", installerType: msi, name: "Setup", '
                         "version: '\"1.2.3\"'", played(install()).log[4].messages[0])


class Devices(unittest.TestCase):
    def test_empty_one_is_skipped_and_one_without_identifier_ends_the_list(self):
        good = {"dev_biid": "unknown"}
        prediction = played(call("TrackDiscoveredPrintersEx",
                                 discoveredDeviceList=[{}, good, {"dev_biid": "x\0y"}, {"a": "b"}, good]))
        self.assertEqual(["skipping discovered device with no information (empty dictionary)",
                          'skipping discovered device with invalid BIID: "x'], warnings(prediction))
        self.assertEqual([f"Exception in {API}TrackDiscoveredPrintersEx: invalid unordered_map<K, T> key"],
                         errors(prediction))
        self.assertEqual([{"operation": "PostDataInternal", "dataType": "sys_printer_discoverylist", "data": good}],
                         prediction.operations)

    def test_plain_forms_answer_with_what_the_copy_gave(self):
        uuid = {"deviceUuid": "x"}
        answers = played(call("GetBiid_Internal", size=64, **uuid), call("GetBiid_Internal", buffer=None, **uuid),
                         call("GetBiid_Internal", size=0, buffer="b", **uuid), call("GetBiid_Internal", deviceUuid=""),
                         call("ToString_Internal", size=4, enumValue=7)).answers
        self.assertEqual([{"result": 34, "text": ""}, {"result": 22, "text": None}, {"result": 22, "text": "b"},
                          {"result": 0, "text": ""}, {"result": 0, "text": "usb"}],
                         [answer["returns"] for answer in answers])


class Pauses(unittest.TestCase):
    def flags_after(self, *steps: dict, before: list, road: str = "basic", **others) -> Optional[dict]:
        return settings(played(*steps, road=road, settings=SettingsFile(before), **others))

    def test_choice_is_kept_and_a_second_pause_forgets_it(self):
        opted_in = [["UserOptIn", "True"]]
        for road in ("basic", "managed"):
            self.assertEqual({"UserOptIn": "False", "OptinBeforePause": "True"},
                             self.flags_after(call("Pause"), before=opted_in, road=road))
            self.assertEqual({"UserOptIn": "True"},
                             self.flags_after(call("Pause"), call("Resume"), before=opted_in, road=road))
            self.assertEqual({"UserOptIn": "False"}, self.flags_after(
                call("Pause"), call("Pause"), call("ShutdownEx", timeoutMsec=0), before=opted_in, road=road))

    def test_start_reports_a_crash_whatever_its_name(self):
        older = SettingsFile([["OptinBeforePause", "tRUE"]], "LUMConfig", {"a": "b"})
        prediction = played(start(""), road="basic", settings=older)
        self.assertEqual([f'Validation failed in {API}StartupEx: invalid [REQUIRED] appName arg: ""',
                          "OptinBeforePause exists and it shouldn't that means there was a CRASH!!"],
                         errors(prediction))
        self.assertEqual(("LumeqConfig", {"a": "b"}, [("UserOptIn", "True")]),
                         prediction.settings["programdata\\zuvan\\lumeq"])

    def test_value_that_is_no_flag_is_no_pause(self):
        before = [["OptinBeforePause", "maybe"]]
        self.assertEqual({"OptinBeforePause": "maybe"}, self.flags_after(start(), before=before))
        self.assertEqual({}, self.flags_after(call("Resume"), before=before))

    def test_without_a_file_a_resume_makes_none(self):
        self.assertEqual({}, played(call("Resume")).settings)

    def test_library_writes_what_the_companion_does_not(self):
        prediction = played(call("SetUserOptInEx", userHasOptedIn=True), failures={"SetUserOptInInternal": "unknown"})
        self.assertEqual(["SetUserOptInXX failed with unknown exception"], warnings(prediction))
        self.assertEqual({"UserOptIn": "True"}, settings(prediction))


class Starts(unittest.TestCase):
    def test_other_numbers_go_out_than_the_host_passed(self):
        self.assertEqual([{"operation": "StartupInternal", "appName": "App", "howType": 9, "whyType": 0,
                           "trackSystemInfo": True, "trackPrintQueueInfo": False}], played(start(why=1)).operations)
        self.assertEqual([f"Exception in {API}StartupEx: [Undefined WhyType: 8]"], errors(played(start(why=8, how=10))))

    def test_message_of_an_opted_in_user_is_tried_once(self):
        missing = "Project ID is empty. Ensure *LumeqConfig.xml is in path!"
        opted_in = call("SetUserOptInEx", userHasOptedIn=True)
        self.assertEqual([missing], warnings(played(start(), opted_in, start(), start(), road="basic")))
        self.assertEqual([missing] * 2, warnings(played(opted_in, start(), {"unload": True}, {"load": True}, start(),
                                                        road="basic")))

    def test_timeout_below_zero_is_ten_seconds(self):
        prediction = played(call("FlushEx", timeoutMsec=-1))
        self.assertEqual([{"operation": "FlushInternal", "timeoutMsec": 10000}], prediction.operations)
        self.assertEqual([f"Validation failed in {API}FlushEx: invalid timeoutMsec arg: -1"], errors(prediction))


class Machines(unittest.TestCase):
    def test_subfolders_have_files_of_their_own(self):
        opted_in = call("SetUserOptInEx", userHasOptedIn=True)
        prediction = played(call("SetLocalSubfolderPathEx", subpath="Brand\\"), opted_in,
                            call("SetLocalSubfolderPathEx", subpath="\\Soak"), opted_in,
                            call("SetLocalSubfolderPathEx", subpath="a:b"), call("Pause"), road="basic")
        self.assertEqual({"UserOptIn": "True"}, settings(prediction, "programdata\\zuvan\\brand\\lumeq"))
        self.assertEqual({"UserOptIn": "False", "OptinBeforePause": "True"}, settings(prediction, "soak\\lumeq"))

    def test_path_that_does_not_fit_is_reported_by_every_use(self):
        prediction = played(call("SetLocalSubfolderPathEx", subpath={"repeat": "x", "times": 300}), call("Resume"),
                            road="basic")
        too_long = "One or both arguments to CombinePath exceed the maximum path length."
        self.assertEqual(["BasicGetUserOptIn exception with " + too_long, "BasicClearOptIn exception with " + too_long],
                         warnings(prediction))

    def test_disabled_tracking_leaves_no_trace(self):
        prediction = played(start(""), call("ScanAcquireInitiated", handle="h"), call("GetUserOptInEx"),
                            call("ToString", enumValue=1, textValue="b"), call("GetBiid_Internal", deviceUuid="x"),
                            disabled=1)
        self.assertEqual(([], [], {}), (prediction.log, prediction.operations, prediction.settings))
        self.assertEqual([{"call": "StartupEx"}, {"call": "ScanAcquireInitiated", "handle": "null"},
                          {"call": "GetUserOptInEx", "returns": False}, {"call": "ToString", "returns": "b"},
                          {"call": "GetBiid_Internal", "returns": {"result": 0, "text": ""}}], prediction.answers)
        self.assertEqual(1, len(errors(played(start(""), disabled=2))))

    def test_unloaded_library_answers_nothing(self):
        self.assertEqual([{"call": "Pause", "error": "Lumeq.dll is not loaded"}, {"call": "Pause"}],
                         played({"unload": True}, call("Pause"), {"load": True}, call("Pause")).answers)


if __name__ == "__main__":
    unittest.main()
