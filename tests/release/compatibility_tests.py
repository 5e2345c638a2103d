"""The baseline of what hosts and the companion library depend on is current, and each kind of change gets its verdict."""

import copy
import json
import os
import unittest

from release_tools import BUILD
import compatibility
import interfaces

BASELINE = json.loads(compatibility.BASELINE.read_text(encoding="utf-8"))
RECORDS = f"{interfaces.RECORDS_NAMESPACE}::"


class Baseline(unittest.TestCase):
    def test_is_what_the_build_has(self):
        compiler = os.environ.get("LUMEQ_CXX", compatibility.COMPILER).split()
        changes = compatibility.differences(BASELINE, interfaces.snapshot(BUILD, compiler))
        self.assertEqual([], changes, "\n".join(map(str, changes)) + "\ndocs/compatibility.md says what to do")

    def test_holds_everything(self):
        self.assertEqual({"Lumeq.dll": 39, "LumeqC.dll": len(BASELINE["functions"]["lumeq.h"])},
                         {library: len(exports) for library, exports in BASELINE["exports"].items()})
        self.assertEqual([39, 11], [len(BASELINE["functions"][header]) for header in ("LumeqApi.h", "LumeqRecords.h")])
        self.assertEqual(48, len(BASELINE["enumerations"]))
        self.assertEqual(len(interfaces.RECORDS), len(BASELINE["layouts"]["records"]))

    def test_version_allows_it(self):
        self.assertFalse(compatibility.is_before(interfaces.version(), BASELINE["version"]))


class Verdicts(unittest.TestCase):
    def setUp(self):
        self.new = copy.deepcopy(BASELINE)

    def assert_verdict(self, *expected: str):
        changes = compatibility.differences(BASELINE, self.new)
        self.assertEqual(list(expected), [str(change) for change in changes])
        breaking = any(text.startswith("BREAKING") for text in expected)
        self.assertEqual("2.0.0" if breaking else "1.1.0", compatibility.least_version("1.0.3", changes))

    def struct(self, name: str, kind: str = "lumeq.h") -> dict:
        return self.new["layouts"][kind][name]

    def test_new_export(self):
        self.new["exports"]["Lumeq.dll"]["Zoom"] = 40
        self.assert_verdict("compatible: export of Lumeq.dll: Zoom is new")

    def test_lost_export(self):
        del self.new["exports"]["Lumeq.dll"]["Pause"]
        self.assert_verdict("BREAKING: export of Lumeq.dll: Pause is gone")

    def test_other_ordinal(self):
        self.new["exports"]["LumeqC.dll"]["lumeq_abi"] = 99
        self.assert_verdict("BREAKING: export of LumeqC.dll: lumeq_abi has the ordinal 99 instead of 1")

    def test_other_signature(self):
        self.new["functions"]["lumeq.h"]["lumeq_pause"] = "void(int32_t how)"
        self.assert_verdict(
            "BREAKING: function of lumeq.h: lumeq_pause has the signature void(int32_t how) instead of void(void)")

    def test_new_function(self):
        self.new["functions"]["lumeq.h"]["lumeq_zoom"] = "void(void)"
        self.assert_verdict("compatible: function of lumeq.h: lumeq_zoom is new")

    def test_new_operation_of_the_companion_library(self):
        self.new["functions"]["LumeqRecords.h"]["ZoomInternal"] = "void()"
        self.assert_verdict("BREAKING: function of LumeqRecords.h: ZoomInternal is new")

    def test_new_value(self):
        self.new["enumerations"]["HowType"]["voice"] = 10
        self.assert_verdict("compatible: value of HowType: voice is new")

    def test_other_number(self):
        self.new["enumerations"]["HowType"]["cd_exe"] = 10
        self.assert_verdict("BREAKING: value of HowType: cd_exe has the number 10 instead of 1")

    def test_lost_enumeration(self):
        del self.new["enumerations"]["InstallType"]
        self.assert_verdict(*(f"BREAKING: value of InstallType: {name} is gone" for name in ("exe", "msi", "unknown")))

    def test_field_at_the_end_of_a_struct_with_size(self):
        screen = self.struct("lumeq_screen")
        screen["fields"]["zoom"] = [screen["size"], "int64_t"]
        screen["size"] += 8
        self.assert_verdict("compatible: struct lumeq_screen: field zoom is new, at 56 of 56 bytes",
                            "compatible: struct lumeq_screen has 64 bytes instead of 56")

    def test_field_at_the_end_of_a_struct_without_size(self):
        self.struct("lumeq_field")["fields"]["zoom"] = [16, "int64_t"]
        self.struct("lumeq_field")["size"] = 24
        self.assert_verdict("BREAKING: struct lumeq_field: field zoom is new, at 16 of 16 bytes",
                            "BREAKING: struct lumeq_field has 24 bytes instead of 16")

    def test_field_in_the_middle(self):
        screen = self.struct("lumeq_screen")
        screen["fields"] |= {"zoom": [48, "int64_t"], "global_context": [56, "const wchar_t*"]}
        screen["size"] = 64
        self.assert_verdict(
            "BREAKING: struct lumeq_screen: field global_context is [56, 'const wchar_t*'] instead of "
            f"{BASELINE['layouts']['lumeq.h']['lumeq_screen']['fields']['global_context']}",
            "BREAKING: struct lumeq_screen: field zoom is new, at 48 of 56 bytes",
            "compatible: struct lumeq_screen has 64 bytes instead of 56")

    def test_other_type_of_a_field(self):
        before = self.struct("lumeq_field")["fields"]["name"]
        self.struct("lumeq_field")["fields"]["name"] = [0, "const char*"]
        self.assert_verdict(f"BREAKING: struct lumeq_field: field name is [0, 'const char*'] instead of {before}")

    def test_smaller_struct(self):
        del self.struct("lumeq_screen")["fields"]["global_context"]
        self.struct("lumeq_screen")["size"] = 48
        self.assert_verdict("BREAKING: struct lumeq_screen: field global_context is gone",
                            "BREAKING: struct lumeq_screen has 48 bytes instead of 56")

    def test_larger_record(self):
        self.struct(f"{RECORDS}EventingEvent", "records")["size"] = 80
        self.assert_verdict(f"BREAKING: struct {RECORDS}EventingEvent has 80 bytes instead of 72")

    def test_moved_field_of_a_record(self):
        self.struct(f"{RECORDS}CompletionEvent", "records")["fields"]["_resultKey"] = [152]
        self.assert_verdict(f"BREAKING: struct {RECORDS}CompletionEvent: field _resultKey is [152] instead of [144]")

    def test_new_and_lost_struct(self):
        self.new["layouts"]["lumeq.h"]["lumeq_zoom"] = {"size": 8, "fields": {}}
        del self.new["layouts"]["lumeq.h"]["lumeq_ad"]
        self.assert_verdict("BREAKING: struct lumeq_ad is gone", "compatible: struct lumeq_zoom is new")

    def test_other_abi(self):
        self.new["abi"] = 2
        self.assert_verdict("BREAKING: LUMEQ_ABI_NUMBER 1 is 2 now")

    def test_patch_changes_nothing(self):
        self.assertEqual("1.0.3", compatibility.least_version("1.0.3", compatibility.differences(BASELINE, self.new)))
        self.assertTrue(compatibility.is_before("1.9.0", "1.10.0"))


if __name__ == "__main__":
    unittest.main()
