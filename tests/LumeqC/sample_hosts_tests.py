"""Hosts of other compilers: what they leave equals what the sample host leaves over the C++ exports."""

import unittest

from day_case import BUILD, DayTestCase


class SampleHosts(DayTestCase):
    def assert_built_host_plays_the_day(self, name: str):
        host = BUILD / "hosts" / name
        if not host.exists():
            self.skipTest(f"{name} is not built")
        self.assert_plays_the_day(host)

    def test_c(self):
        self.assert_built_host_plays_the_day("day-c.exe")

    def test_c_prints_the_state(self):
        self.assert_prints_the_state("telemetry: enabled, choice no, road managed, 0 queued, 0 dropped",
                                     BUILD / "hosts" / "day-c.exe")

    def test_cpp_prints_the_state(self):
        for name in ("day-cpp.exe", "day-loader.exe"):
            with self.subTest(name):
                self.assert_prints_the_state("telemetry: enabled, choice 2, paused 0, road 1, 0 queued, 0 dropped",
                                             BUILD / "hosts" / name)

    def test_cpp_with_other_strings_and_checked_containers(self):
        self.assert_built_host_plays_the_day("day-cpp.exe")

    def test_cpp_that_loads_the_library_at_run_time(self):
        self.assert_built_host_plays_the_day("day-loader.exe")

    def test_c_of_microsofts_binary_interface(self):
        self.assert_built_host_plays_the_day("day-msvc-c.exe")

    def test_cpp_of_microsofts_binary_interface(self):
        self.assert_built_host_plays_the_day("day-msvc-cpp.exe")


if __name__ == "__main__":
    unittest.main()
