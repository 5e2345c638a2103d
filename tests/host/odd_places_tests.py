"""Hosts, folders and settings in places of odd names, and in places that are too deep."""

import unittest

from support.places import Places, PlacedTestCase, warning, warnings_of
from support import LogLine, call, error, record, trace

# What Windows lets a file be called, one kind of character each.
NAMES = ["a b  c", "Привет", "漢字かな", "😀🖨"]

START = call("StartupEx", appName="App", whyType=4, howType=7, trackSystemInfo=True, trackPrintQueueInfo=False)
OPT_IN = call("SetUserOptInEx", userHasOptedIn=True)
READ = call("GetUserOptInEx")
HOME = call("ScreenDisplayed", screenName="Home")
REFUSED = call("ScreenDisplayed", screenName="")
HOME_RECORD = record("app", "displayed", "screen", "/Home")
SAVED = '<LumeqConfig version="4.0"><UserOptIn>True</UserOptIn></LumeqConfig>'
TOO_LONG = "exception with One or both arguments to CombinePath exceed the maximum path length."


def named(name: str) -> Places:
    return Places(host=rf"\Programs\{name}", host_name=f"{name}.exe", temporary=rf"\Temporary {name}\{name}",
                  program_data=rf"\Data {name}")


def refused_by(host_name: str) -> LogLine:
    line = error("ScreenDisplayed", 'invalid [REQUIRED] screenName arg: ""')
    return line._replace(message=line.message.replace("lumeq-host.exe", host_name))


def deep(length: int) -> str:
    """A folder whose path has so many characters, with the drive."""
    path = ""
    rest = length - len("C:")
    while rest > 200:
        path += "\\" + "d" * 99
        rest -= 100
    return path + "\\" + "e" * (rest - 1)


class AnyScript(PlacedTestCase):
    """Every place of the session has the name."""

    def play_named(self, name: str, road: str):
        subfolder = rf"{name}\inner {name}"
        outcome = self.play_at(named(name), START, call("SetLocalSubfolderPathEx", subpath=subfolder), OPT_IN, READ,
                               HOME, REFUSED, road=road)
        self.assertEqual([{"call": "GetUserOptInEx", "returns": True}],
                         [line for line in outcome.host if "returns" in line])
        self.assertEqual(SAVED, outcome.text(f"{name}/inner {name}/LumeqLocalSettings.xml").rstrip())
        self.assertEqual([refused_by(f"{name}.exe")], outcome.error_file)
        arguments = "mode: (null), localContext: (null), globalContext: (null)"
        self.assertEqual(
            [trace("SetLocalSubfolderPathEx", f'subpath: "{subfolder}"'),
             trace("SetUserOptInEx", "userHasOptedIn: 1"),
             trace("GetUserOptInEx"),
             trace("GetUserOptInEx", "...returns: true"),
             trace("ScreenDisplayed", f'flow: (null), screenPath: (null), screenName: "Home", {arguments}'),
             trace("ScreenDisplayed", f'flow: (null), screenPath: (null), screenName: "", {arguments}'),
             refused_by(f"{name}.exe")],
            outcome.calls[1:])
        return outcome

    def test_serves_the_managed_road(self):
        for name in NAMES:
            with self.subTest(name):
                self.assertEqual([HOME_RECORD], self.play_named(name, "managed").records)

    def test_serves_the_basic_road(self):
        self.assertEqual([], self.play_named(" ".join(NAMES), "basic").companion)

    def test_is_no_part_of_a_url(self):
        self.play_named("100%20#b", "basic")

    def test_stands_in_the_log_as_it_is(self):
        name = " ".join(NAMES)
        outcome = self.play_at(named(name), HOME, without_companion=True)
        self.assertEqual([warning("PostEventXX failed with VestoException exception The companion library was not "
                                  rf'found\nPath: "C:\Programs\{name}\LumeqShim.Managed.dll"')],
                         warnings_of(outcome))


class NamesThatNoFileCanHave(PlacedTestCase):
    """An unpaired surrogate, which the file system under the machine refuses."""

    def test_temporary_folder_loses_the_log_alone(self):
        outcome = self.play_at(Places(temporary="\\Temporary \ud800"), OPT_IN, READ, HOME, REFUSED)
        self.assertEqual({"host.jsonl", "companion.jsonl", "LumeqLocalSettings.xml"}, set(outcome.files))
        self.assertEqual([HOME_RECORD], outcome.records)
        self.assertTrue(outcome.host[1]["returns"])

    def test_subfolder_is_reported_and_nothing_is_saved(self):
        subfolder = call("SetLocalSubfolderPathEx", subpath={"units": [0x61, 0xd800]})
        outcome = self.play_at(Places(), subfolder, OPT_IN, HOME, road="basic")
        self.assertEqual(
            [warning("BasicSetUserOptIn failed with _com_error exception 0x80070003, Path not found.")],
            warnings_of(outcome))
        self.assertEqual({"host.jsonl", "Lumeq.Log.txt"}, set(outcome.files))

    def test_data_of_all_users_means_opted_out_and_the_host_goes_on(self):
        for road, records in (("managed", [HOME_RECORD]), ("basic", [])):
            with self.subTest(road):
                outcome = self.play_at(Places(program_data="\\Data \udc00"), START, OPT_IN, READ, HOME, road=road)
                self.assertEqual({"call": "GetUserOptInEx", "returns": False}, outcome.host[2])
                self.assertEqual(records, outcome.records)
                self.assertEqual(set(), set(outcome.files) - {"host.jsonl", "companion.jsonl"})


class TooDeep(PlacedTestCase):
    """Of a path the library keeps 260 characters."""

    def test_long_name_of_the_host_is_cut_in_the_log_and_nothing_else_is_lost(self):
        places = Places(host="\\" + "h" * 100, host_name="n" * 200 + ".exe")
        for road, records in (("managed", [HOME_RECORD]), ("basic", [])):
            with self.subTest(road):
                outcome = self.play_at(places, OPT_IN, READ, HOME, REFUSED, road=road)
                self.assertEqual([refused_by("n" * (260 - len(r"C:\\") - 100))], outcome.error_file)
                self.assertTrue(outcome.host[1]["returns"])
                self.assertEqual(SAVED, outcome.text("LumeqLocalSettings.xml").rstrip())
                self.assertEqual(records, outcome.records)

    def test_host_so_deep_that_its_factory_file_has_no_name_is_served_without_settings_and_log(self):
        # The first leaves no room for LumeqConfig.xml. Of the second not even the folder fits.
        for length in (247, 330):
            places = Places(host=deep(length), host_name="scan.exe")
            with self.subTest(length=length, road="managed"):
                outcome = self.play_at(places, START, OPT_IN, READ, HOME, REFUSED)
                self.assertEqual([HOME_RECORD], outcome.records)
                self.assertEqual({"host.jsonl", "companion.jsonl", "LumeqLocalSettings.xml"}, set(outcome.files))
            with self.subTest(length=length, road="basic"):
                outcome = self.play_at(places, START, OPT_IN, READ, HOME, REFUSED, road="basic")
                self.assertFalse(outcome.host[2]["returns"])
                self.assertEqual({"host.jsonl"}, set(outcome.files))

    def test_log_has_the_files_whose_names_fit(self):
        # Lumeq.Log.txt is the shortest of the three.
        logs = r"\Zuvan\LUMEQ" "\\"
        for length, files in ((259 - len(logs + "Lumeq.Error.txt"), {"Lumeq.Error.txt", "Lumeq.Log.txt"}),
                              (259 - len(logs + "Lumeq.Log.txt"), {"Lumeq.Log.txt"}),
                              (260 - len(logs + "Lumeq.Log.txt"), set()),
                              (300, set())):
            with self.subTest(length):
                outcome = self.play_at(Places(temporary=deep(length)), HOME, REFUSED)
                self.assertEqual({"host.jsonl", "companion.jsonl"} | files, set(outcome.files))
                self.assertEqual([HOME_RECORD], outcome.records)

    def test_temporary_folder_that_does_not_fit_is_not_taken_for_the_current_one(self):
        places = Places(temporary=deep(300), current=r"\Current")
        logs = self.machine.folder(r"\Current\Zuvan\LUMEQ")
        logs.mkdir(parents=True)
        self.play_at(places, REFUSED)
        self.assertEqual([], list(logs.iterdir()))

    def test_subfolder_is_reported_at_each_operation_and_nothing_is_saved(self):
        subfolder = call("SetLocalSubfolderPathEx", subpath="s" * 240)
        outcome = self.play_at(Places(), subfolder, OPT_IN, READ, call("Pause"), HOME, road="basic")
        self.assertEqual([warning(f"{operation} {TOO_LONG}")
                          for operation in ("BasicDidUserOpted", "BasicSetUserOptIn", "BasicGetUserOptIn",
                                            "BasicGetUserOptIn", "BasicSetUserOptIn", "BasicSetUserOptIn")],
                         warnings_of(outcome))
        self.assertFalse(outcome.host[2]["returns"])
        self.assertEqual({"host.jsonl", "Lumeq.Log.txt"}, set(outcome.files))

    def test_data_of_all_users_mean_opted_out_and_the_host_goes_on(self):
        length = 260 - len(r"\Zuvan\LUMEQ\LumeqLocalSettings.xml")
        for road, records in (("managed", [HOME_RECORD]), ("basic", [])):
            with self.subTest(road):
                outcome = self.play_at(Places(program_data=deep(length + 1)), START, HOME, READ, road=road)
                self.assertFalse(outcome.host[2]["returns"])
                self.assertEqual(records, outcome.records)
                self.assertEqual(set(), set(outcome.files) - {"host.jsonl", "companion.jsonl"})

    def test_deepest_settings_file_that_fits_is_written_and_read(self):
        length = 259 - len(r"\Zuvan\LUMEQ\LumeqLocalSettings.xml")
        outcome = self.play_at(Places(program_data=deep(length)), OPT_IN, READ, road="basic")
        self.assertTrue(outcome.host[1]["returns"])
        self.assertEqual(SAVED, outcome.text("LumeqLocalSettings.xml").rstrip())


if __name__ == "__main__":
    unittest.main()
