"""lumeq schema: what it prints, and the pages that it writes."""

import copy
import json
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Callable

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD, ROOT  # noqa: E402
from catalogue_tests import CATALOGUE, ENUMERATIONS, OPERATIONS, PATTERNS  # noqa: E402
from program import run, run_json  # noqa: E402


class Pages(unittest.TestCase):
    maxDiff = None

    def assert_current(self, page: str, *options: str):
        printed = run("schema", "export", "--format", "md", *options)
        self.assertEqual((0, ""), (printed.returncode, printed.stderr))
        self.assertEqual((ROOT / "docs" / page).read_text(encoding="utf-8"), printed.stdout,
                         f"lumeq schema export --format md {' '.join(options)} > docs/{page} writes it anew")

    def test_reference_is_current(self):
        self.assert_current("reference.md")

    def test_privacy_sheet_is_current(self):
        self.assert_current("privacy.md", "--page", "privacy")

    def test_privacy_sheet_names_every_field(self):
        sheet = (ROOT / "docs" / "privacy.md").read_text(encoding="utf-8")
        fields = [field["field"] for field in CATALOGUE["event"]["fields"] + CATALOGUE["message"]["fields"]]
        fields += [("app_event_details." if operation["record"]["kind"] == "event" else "") + field["field"]
                   for operation in OPERATIONS.values() if "record" in operation
                   for field in operation["record"]["details"]]
        self.assertEqual([], [field for field in fields if f"| `{field}` |" not in sheet])


class Show(unittest.TestCase):
    def test_exported_catalogue_is_the_file(self):
        self.assertEqual(CATALOGUE, run_json("schema", "export"))

    def test_shows_arguments_with_their_rules_record_and_examples(self):
        shown = run("schema", "show", "HyperlinkClicked")
        self.assertEqual((0, ""), (shown.returncode, shown.stderr))
        for text in ("HyperlinkClicked(flow, screenPath, screenName, mode, controlName, localContext, globalContext)\n",
                     "  mode                    text, may be null\n",
                     "pattern mode: ([a-z0-9]+)((_[a-z0-9]+)?)* (any case)\n",
                     '  app_event_object                                 "hyperlink" [constant]\n',
                     "  refused by the event class, because the mode of a hyperlink has an underscore:\n"
                     '    {"call":"HyperlinkClicked","screenName":"Home","mode":"on_line","controlName":"help"}\n'):
            self.assertIn(text, shown.stdout)
        self.assertNotIn("\x1b", shown.stdout)

    def test_shows_constants_of_the_c_header(self):
        self.assertIn("  2       auto                            LUMEQ_SCAN_PAGE_SIZE_AUTO\n",
                      run("schema", "show", "Scan::PageSizeType").stdout)

    def test_shows_texts_of_a_pattern(self):
        shown = run("schema", "show", "mode").stdout
        self.assertIn('  refused: "", "dark__v2", "_dark", "dark_", "dark-v2"\n', shown)
        self.assertIn("  used by ScreenDisplayed mode\n", shown)

    def test_prints_the_entry_as_json(self):
        self.assertEqual(OPERATIONS["UrlLaunchedEx"], run_json("schema", "show", "UrlLaunchedEx", "--json"))
        self.assertEqual(PATTERNS["url"], run_json("schema", "show", "url", "--json"))

    def test_helps_with_an_unknown_name(self):
        shown = run("schema", "show", "buttonclicked")
        self.assertEqual((2, ""), (shown.returncode, shown.stdout))
        self.assertIn("did you mean ButtonClicked?", shown.stderr)

    def test_lists_every_name(self):
        listed = run("schema", "list").stdout
        for name in (*OPERATIONS, *ENUMERATIONS, *PATTERNS):
            self.assertIn(f"  {name} ", listed)


class Diff(unittest.TestCase):
    """Each kind of change, and whom it breaks."""

    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(dir=BUILD)))

    def changes(self, change: Callable[[dict], None]) -> list[tuple[str, str, str]]:
        changed = copy.deepcopy(CATALOGUE)
        change(changed)
        file = self.folder / "new.json"
        file.write_text(json.dumps(changed), encoding="utf-8")
        compared = run("schema", "diff", str(ROOT / "schema" / "lumeq.json"), str(file), "--json")
        found = [(change["breaks"], change["where"], change["what"]) for change in json.loads(compared.stdout)]
        breaks = any(its[0] != "nothing" for its in found)
        self.assertEqual(int(breaks), compared.returncode)
        return found

    @staticmethod
    def operation(catalogue: dict, name: str) -> dict:
        return next(operation for operation in catalogue["operations"] if operation["name"] == name)

    def test_nothing_differs(self):
        compared = run("schema", "diff", str(ROOT / "schema" / "lumeq.json"))
        self.assertEqual((0, "Nothing differs.\n"), (compared.returncode, compared.stdout))

    def test_narrower_pattern_breaks_hosts_and_shows_a_shortest_text(self):
        self.assertEqual([("hosts", "pattern mode", 'refuses "a_a", which it accepted')],
                         self.changes(lambda new: new["patterns"]["mode"].update(expression="[a-z0-9]+")))

    def test_wider_pattern_breaks_receivers(self):
        self.assertEqual([("receivers", "pattern codeName", 'accepts "A", which it refused')],
                         self.changes(lambda new: new["patterns"]["codeName"].update(ignoresCase=True)))

    def test_other_spelling_of_a_pattern_breaks_nothing(self):
        self.assertEqual([], self.changes(
            lambda new: new["patterns"]["mode"].update(expression="[a-z0-9]+(_[a-z0-9]+)*")))

    def test_pattern_that_cannot_be_read_is_an_error(self):
        file = self.folder / "new.json"
        changed = copy.deepcopy(CATALOGUE)
        changed["patterns"]["mode"]["expression"] = "(a"
        file.write_text(json.dumps(changed), encoding="utf-8")
        compared = run("schema", "diff", str(file))
        self.assertEqual(2, compared.returncode)
        self.assertIn("pattern mode", compared.stderr)

    def test_operation_that_is_gone_breaks_both(self):
        self.assertEqual([("hosts", "TileClicked", "the operation is gone"),
                          ("receivers", "TileClicked", "its records do not come any more")],
                         self.changes(lambda new: new["operations"].remove(self.operation(new, "TileClicked"))))

    def test_new_operation_breaks_nothing(self):
        def add(new: dict) -> None:
            new["operations"].append({**self.operation(new, "TileClicked"), "name": "TileMoved"})

        self.assertEqual([("nothing", "TileMoved", "a new operation")], self.changes(add))

    def test_other_order_of_arguments_breaks_hosts(self):
        (change,) = self.changes(lambda new: self.operation(new, "GetBiid_Internal")["arguments"].reverse())
        self.assertEqual(("hosts", "GetBiid_Internal"), change[:2])

    def test_argument_that_becomes_required_breaks_hosts(self):
        self.assertEqual(
            [("hosts", "ScreenDisplayed flow", "may no longer be null")],
            self.changes(lambda new: self.operation(new, "ScreenDisplayed")["arguments"][0].update(required=True)))

    def test_text_of_a_value_breaks_receivers(self):
        self.assertEqual(
            [("receivers", "AdType banner", 'is recorded as "flag" instead of "banner"')],
            self.changes(lambda new: new["enumerations"]["AdType"]["values"][1].update(text="flag")))

    def test_new_and_lost_values(self):
        def replace(new: dict) -> None:
            new["enumerations"]["AdType"]["values"][4] = {"value": 5, "name": "video", "text": "video", "record": 5}

        self.assertEqual([("hosts", "AdType virtualalert", "the value is gone"),
                          ("receivers", "AdType video", 'a new value, recorded as "video"')], self.changes(replace))

    def test_fields_of_a_record(self):
        def replace(new: dict) -> None:
            fields = self.operation(new, "DeviceConfigCompleted")["record"]["details"]
            fields[1] = {"field": "config_name", "argument": "settingType", "privacy": "choice"}
            fields[2]["privacy"] = "free"

        self.assertEqual(
            [("receivers", "DeviceConfigCompleted app_event_details.config_setting", "the field is gone"),
             ("nothing", "DeviceConfigCompleted app_event_details.task_result",
              "has the privacy class free instead of choice"),
             ("nothing", "DeviceConfigCompleted app_event_details.config_name",
              "a new field, of the privacy class choice")], self.changes(replace))

    def test_file_that_is_no_catalogue(self):
        for name, content in (("broken.json", "{"), ("other.json", "{}"), ("absent.json", None)):
            if content is not None:
                (self.folder / name).write_text(content, encoding="utf-8")
            with self.subTest(name):
                compared = run("schema", "diff", str(self.folder / name))
                self.assertEqual((2, ""), (compared.returncode, compared.stdout))
                self.assertIn(name, compared.stderr)


class CommandLine(unittest.TestCase):
    def test_help_has_examples_and_exit_codes(self):
        shown = run("--help")
        self.assertEqual((0, ""), (shown.returncode, shown.stderr))
        self.assertIn("Exit codes: 0 nothing found, 1 something found, 2 ", shown.stdout)
        for command in (("schema", "show"), ("schema", "export"), ("schema", "diff")):
            with self.subTest(command):
                self.assertIn("Examples:\n  lumeq " + " ".join(command), run(*command, "--help").stdout)

    def test_wrong_command_line_ends_with_two(self):
        for arguments in ((), ("schema",), ("schema", "show"), ("schema", "export", "--format", "xml"), ("nonsense",)):
            with self.subTest(arguments):
                result = run(*arguments)
                self.assertEqual((2, ""), (result.returncode, result.stdout))
                self.assertNotEqual("", result.stderr)

    def test_version_is_that_of_the_library(self):
        self.assertEqual("lumeq 1.0.0\n", run("--version").stdout)


if __name__ == "__main__":
    unittest.main()
