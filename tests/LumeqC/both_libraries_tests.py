"""Both DLLs used side by side in one process: they are one library with one state."""

import unittest

from day_case import BUILD, MODES, DayTestCase


class BothLibraries(DayTestCase):
    def test_each_sees_what_the_other_did_and_all_events_arrive_in_the_order_of_their_thread(self):
        for mode, arguments in MODES.items():
            with self.subTest(mode):
                outcome = self.run_host(BUILD / "tests" / "lumeq-both.exe", "managed", arguments)
                self.assertEqual((0, []), (outcome.status, outcome.error_file))
                self.assertEqual(["StartupInternal", "ShutdownInternal", "ShutdownInternal"],
                                 [line["operation"] for line in outcome.companion
                                  if line["operation"] in ("StartupInternal", "ShutdownInternal")])
                screens = [record["app_event_object_label"].removeprefix("/") for record in outcome.records
                           if record["app_event_object"] == "screen"]
                self.assertEqual("first", screens[0])
                for prefix in ("cpp", "c"):
                    self.assertEqual([f"{prefix}{number}" for number in range(100)],
                                     [label for label in screens if label.rstrip("0123456789") == prefix])
                self.assertEqual({"Model 8100"}, {record["app_event_context"]["context_global"]["_dev_modelname"]
                                                  for record in outcome.records})
                self.assertEqual(4, sum(record["app_event_object"] == "task" for record in outcome.records))


if __name__ == "__main__":
    unittest.main()
