"""Enumeration tables that break a rule: the compiler refuses each and shows the rule."""

import os
import subprocess
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[4]
OPTIONS = ["-std=c++20", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", f"-I{ROOT}", "-x", "c++", "-"]

COLOURS = """
#include "LumeqLib/Extra/Eventing/EnumerationTable.h"
using namespace Zuvan::Lumeq::Extra::Eventing;
enum class Colour : std::int32_t { unknown, red, blue };
enum class RecordColour : std::int32_t {};
inline constexpr Enumeration<Colour, RecordColour> Colours({L"colour", L"Colour", L"RecordColour"}, {ROWS});
"""
ROWS = '{0, L"unknown", 0}, {1, L"red", 2}, {2, L"blue", 1}'

TWO = COLOURS.replace("ROWS", ROWS) + """
enum class Paint : std::int32_t { unknown, blue, red };
inline constexpr Enumeration<Paint, RecordColour> Paints({L"paint", L"Paint", L"NAME"}, {ROWS});
constexpr EnumerationList Both(Colours, Paints);
static_assert(decltype(Both)::PositionOfApi<Paint>() == 1 && decltype(Both)::PositionOfRecord<RecordColour>() == 0);
static_assert(std::is_same_v<decltype(Both)::RecordOf<Paint>, RecordColour>);
"""


def two_tables(rows: str = '{0, L"unknown", 0}, {1, L"blue", 1}, {2, L"red", 2}', name: str = "RecordColour") -> str:
    return TWO.replace("ROWS", rows).replace("NAME", name)


def compiled(source: str) -> tuple[int, str]:
    result = subprocess.run([*os.environ["LUMEQ_CXX"].split(), *OPTIONS], input=source, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return result.returncode, result.stdout


class EnumerationTables(unittest.TestCase):
    def assert_refused(self, rule: str, source: str):
        status, output = compiled(source)
        self.assertNotEqual(0, status)
        self.assertIn(f'throw "{rule}"', output)

    def assert_rows_refused(self, rule: str, rows: str):
        self.assert_refused(rule, COLOURS.replace("ROWS", rows))

    def test_sound_table_compiles(self):
        self.assertEqual((0, ""), compiled(COLOURS.replace("ROWS", ROWS)))

    def test_two_rows_with_one_api_value(self):
        self.assert_rows_refused("a row's API value is not its position",
                                 '{0, L"unknown", 0}, {1, L"red", 2}, {1, L"blue", 1}')

    def test_gap_in_the_api_values(self):
        self.assert_rows_refused("a row's API value is not its position",
                                 '{0, L"unknown", 0}, {2, L"blue", 1}, {3, L"red", 2}')

    def test_two_rows_with_one_record_value(self):
        self.assert_rows_refused("two rows have the same record value",
                                 '{0, L"unknown", 0}, {1, L"red", 2}, {2, L"blue", 2}')

    def test_gap_in_the_record_values(self):
        self.assert_rows_refused("the record values have a gap",
                                 '{0, L"unknown", 0}, {1, L"red", 3}, {2, L"blue", 1}')

    def test_negative_record_value(self):
        self.assert_rows_refused("the record values have a gap",
                                 '{0, L"unknown", 0}, {1, L"red", -1}, {2, L"blue", 1}')

    def test_row_without_text(self):
        self.assert_rows_refused("a row has no text", '{0, L"unknown", 0}, {1, L"", 2}, {2, L"blue", 1}')

    def test_two_rows_with_one_text(self):
        self.assert_rows_refused("two rows have the same text",
                                 '{0, L"unknown", 0}, {1, L"red", 2}, {2, L"red", 1}')

    def test_too_few_rows(self):
        self.assert_rows_refused("an enumerator of the exports has no row", '{0, L"unknown", 0}, {1, L"red", 1}')

    def test_too_many_rows(self):
        self.assert_rows_refused("a row has no enumerator at the exports", ROWS + ', {3, L"green", 3}')

    def test_tables_that_agree_may_share_a_record_type(self):
        self.assertEqual((0, ""), compiled(two_tables()))

    def test_tables_that_disagree_about_a_record_text(self):
        rows = '{0, L"unknown", 0}, {1, L"blue", 2}, {2, L"red", 1}'
        self.assert_refused("a record value has two texts", two_tables(rows=rows))

    def test_tables_that_disagree_about_a_records_name(self):
        self.assert_refused("a record type has two names", two_tables(name="Pigment"))

    def test_type_of_the_records_is_none_of_the_exports(self):
        for position in ("PositionOfApi<RecordColour>", "PositionOfRecord<Colour>"):
            with self.subTest(position):
                self.assert_refused("not a type of the schema",
                                    two_tables() + f"constexpr auto None = decltype(Both)::{position}();")


if __name__ == "__main__":
    unittest.main()
