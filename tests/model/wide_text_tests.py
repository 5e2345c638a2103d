"""Windows texts, as the model of the exported rules has them."""

import unittest

from wide_text import (characters, formatted, has_unpaired, logged, quoted, session_bytes, session_dictionary,
                       session_text, shown, spelled, wide)


class CodeUnits(unittest.TestCase):
    def test_characters_beyond_the_bmp_are_two_units(self):
        self.assertEqual("a\ud83d\ude00b", wide("a\U0001f600b"))
        self.assertEqual("\udbff\udfff", wide("\U0010ffff"))
        self.assertEqual("\uffff\u00e9", wide("\uffff\u00e9"))

    def test_unpaired_ones_stay_and_pairs_become_characters(self):
        self.assertEqual("\ud800a\U0001f600\udc00", characters("\ud800a\ud83d\ude00\udc00"))

    def test_unpaired_ones_are_found_wherever_they_stand(self):
        for text in ("\ud800", "a\ud800", "\ud800a", "\udc00", "\udc00\ud800", "\ud800\ud800\udc00",
                     "\ud800\udc00\udc00"):
            self.assertTrue(has_unpaired(text), ascii(text))
        for text in ("", "a", "\ud800\udc00", "\udbff\udfffa\ud83d\ude00"):
            self.assertFalse(has_unpaired(text), ascii(text))

    def test_each_unpaired_one_is_shown_as_a_replacement(self):
        self.assertEqual("\ufffd\ufffda\U00010000\ufffd", shown("\udc00\ud800a\ud800\udc00\udfff"))


class Messages(unittest.TestCase):
    def test_of_4095_units_is_whole_and_a_longer_one_ends_in_a_mark(self):
        self.assertEqual("x" * 4095, logged("x" * 4095))
        self.assertEqual("x" * 4084 + "<TRUNCATED>", logged("x" * 4096))

    def test_cut_comes_before_line_breaks_are_spelled(self):
        self.assertEqual("\\n" * 4095, logged("\n" * 4095))
        self.assertEqual("\\r\\n" + "x" * 4082 + "<TRUNCATED>", logged("\r\n" + "x" * 5000))

    def test_cut_may_part_a_pair(self):
        self.assertEqual("x" * 4083 + "\ufffd<TRUNCATED>", logged("x" * 4083 + "\ud83d\ude00" * 10))

    def test_every_text_in_them_ends_at_its_first_zero(self):
        self.assertEqual('a: "b, 7', formatted("%s: %s, %d", "a", '"b\0c"', 7))

    def test_null_stands_without_quotation_marks(self):
        self.assertEqual(("(null)", '""', '"a"b"'), (quoted(None), quoted(""), quoted('a"b')))


class SessionFiles(unittest.TestCase):
    def test_texts_have_four_forms(self):
        self.assertEqual("\ud83d\ude00", session_text("\U0001f600"))
        self.assertEqual("\ud800A", session_text({"units": [0xD800, 65]}))
        self.assertEqual("ababab", session_text({"repeat": "ab", "times": 3}))
        self.assertEqual("xaa\0", session_text(["x", {"repeat": "a", "times": 2}, {"units": [0]}]))
        self.assertEqual("", session_text([]))

    def test_narrow_texts_have_bytes_for_units(self):
        text = ["\u00e9", {"units": [255, 0]}, {"repeat": "z", "times": 2}]
        self.assertEqual(b"\xc3\xa9\xff\0zz", session_bytes(text))

    def test_later_of_two_equal_names_counts(self):
        self.assertEqual({"a": "2", "b": ""}, session_dictionary([["a", "1"], ["b", ""], ["a", "2"]]))
        self.assertEqual({"a": "\ud83d\ude00"}, session_dictionary({"a": "\U0001f600"}))

    def test_what_is_spelled_reads_the_same(self):
        for text in ("", "abc", "a\0\n", "\ud800", "\udc00\ud800", "\ud83d\ude00" * 100, "ab" * 50000,
                     "x" * 31 + "\ud83d", "\ude00\ud83d" * 40, "q" + "\n" * 5000 + "r"):
            self.assertEqual(text, session_text(spelled(text)), ascii(text[:20]))

    def test_long_texts_are_spelled_by_their_runs(self):
        self.assertEqual([{"repeat": "ab", "times": 50000}], [spelled("ab" * 50000)])
        self.assertEqual(["q", {"repeat": "x", "times": 100}, {"units": [0xDC00]}], spelled("q" + "x" * 100 + "\udc00"))


if __name__ == "__main__":
    unittest.main()
