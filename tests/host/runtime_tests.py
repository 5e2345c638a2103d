"""What replaces the toolchain's runtime libraries, in programs of their own."""

import unittest

from support.host_process import program
from support import BUILD, SessionTestCase


class Runtime(SessionTestCase):
    def run_program(self, name: str, *arguments: str) -> tuple[int, list[str]]:
        """Exit code, and what it printed."""
        with program(self.machine, name, *arguments) as script:
            lines = script.stdout.read().splitlines()
            return script.wait(self.host_seconds), lines

    def test_overrun_buffer_ends_the_process_at_once(self):
        self.assertEqual((0, ["abcdefg", "returned"]), self.run_program("lumeq-overrun-buffer.exe", "abcdefg"))
        # Of the system's code for it, 0xC0000409, the last byte arrives here.
        status, lines = self.run_program("lumeq-overrun-buffer.exe", "a" * 64)
        self.assertEqual(9, status)
        self.assertNotIn("returned", lines)

    def test_threads_are_given_what_they_ask_for(self):
        self.assertEqual((0, [
            "routines that are to run once: 1",
            "threads for which it was done before they went on: 8",
            "attempts until the first that does not throw: 4",
            "threads that were told: 3",
            "additions under a mutex: 80000",
            "constructions of a static variable: 1",
            "threads that saw it whole: 8",
            "threads whose variables are new and the last error untouched: 8",
            "threads whose variables are their own: 8",
            "exceptions thrown twice and caught without memory: 80",
            "memory was asked for: 1",
            "blocks of memory that are left behind: 0",
        ]), self.run_program("lumeq-thread-runtime.exe"))

    def test_library_works_in_a_process_that_has_no_slot_and_for_a_while_no_memory_to_give(self):
        library = str(BUILD / "Lumeq.dll")
        for when in ("after", "before"):
            with self.subTest(when):
                self.assertEqual((0, ["undisturbed 1, answered 1 1, threw 10, gone 1, more blocks 0"] * 3),
                                 self.run_program("lumeq-without-slots.exe", library, when))


if __name__ == "__main__":
    unittest.main()
