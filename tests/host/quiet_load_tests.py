"""What the library does to its host's process by being loaded and let go: watched from before its first step on.

All that it does outside itself goes through the functions that it imports. The watching program counts them.
"""

import os
import unittest
from unittest import mock

from support.host_process import program
from support import BUILD, SessionTestCase

MEMORY = {"calloc", "free", "malloc", "realloc", "memcmp", "memcpy", "memmove", "memset", "memchr"}
TEXTS = {"strcmp", "strlen", "strncmp", "wcslen", "iswctype", "towlower", "towupper", "isspace", "isalnum",
         "isprint", "setlocale", "localeconv", "MultiByteToWideChar", "WideCharToMultiByte", "___lc_codepage_func",
         "___mb_cur_max_func"}
LOCKS = {"_lock", "_unlock", "InitializeCriticalSection", "DeleteCriticalSection", "EnterCriticalSection",
         "LeaveCriticalSection", "AcquireSRWLockExclusive", "ReleaseSRWLockExclusive", "WakeAllConditionVariable"}
OWN_STARTING_AND_ENDING = {"_initterm", "_amsg_exit", "VirtualQuery", "VirtualProtect", "__iob_func", "fflush"}
LAST_ERROR = {"GetLastError", "SetLastError"}
# Of these the stack protector's secret is made.
TIME_AND_PLACE = {"GetSystemTimeAsFileTime", "QueryPerformanceCounter", "GetCurrentProcessId", "GetCurrentThreadId"}
HARMLESS = MEMORY | TEXTS | LOCKS | OWN_STARTING_AND_ENDING | LAST_ERROR | TIME_AND_PLACE


class Watched:
    def __init__(self, text: str):
        words = [line.split(" ") for line in text.splitlines()]
        self.threads = [int(count) for phase, count, *_ in words if phase == "threads"]
        calls = [(phase, *name.split("!")) for phase, name, *_ in words if phase != "threads"]
        self.phases = {phase for phase, _, _ in calls}
        self.harmful = {function for _, _, function in calls if function not in HARMLESS}
        self.functions = {function for _, _, function in calls}


class QuietLoad(SessionTestCase):
    def watch(self, library: str, loud: str = "") -> Watched:
        with mock.patch.dict(os.environ, LOUD=loud), \
                program(self.machine, "lumeq-watch-loading.exe", str(BUILD / library)) as watcher:
            text = watcher.stdout.read()
            self.assertEqual(0, watcher.wait(self.host_seconds))
        return Watched(text)

    def test_loading_and_unloading_touch_nothing_but_memory(self):
        watched = self.watch("Lumeq.dll")
        self.assertEqual({"load", "unload"}, watched.phases)
        self.assertLess({"malloc", "free"}, watched.functions, "it is seen")
        self.assertEqual(set(), watched.harmful)
        self.assertEqual([0], watched.threads, "nor do the libraries that it needs start any")

    def test_library_that_does_more_is_caught(self):
        for loud, functions in (("file", {"CreateFileW", "CloseHandle"}), ("key", {"RegOpenKeyExW", "RegCloseKey"}),
                                ("thread", {"CreateThread", "CloseHandle"}),
                                ("com", {"CoInitializeEx", "CoUninitialize"}), ("socket", {"socket", "closesocket"})):
            with self.subTest(loud):
                self.assertEqual({"GetEnvironmentVariableA", *functions},
                                 self.watch("tests/lumeq-loud.dll", loud).harmful)


if __name__ == "__main__":
    unittest.main()
