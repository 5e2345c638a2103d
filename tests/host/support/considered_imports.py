"""What the library imports and no test makes fail, with the reason for each group.

Whatever else it imports has a row in tests/faults/PlatformCalls.cpp.
"""

import re

from .paths import ROOT

NOT_MADE_TO_FAIL = {
    "releases something, and nothing depends on its result":
        "CloseHandle CoTaskMemFree CoUninitialize FindClose FreeLibrary FreeLibraryAndExitThread FreeSid "
        "InternetCloseHandle LocalFree RegCloseKey ReleaseMutex RpcStringFreeW SysFreeString VariantClear",
    "returns a time, a number or a bit, and cannot fail":
        "GetCurrentProcessId GetCurrentThreadId GetLastError GetSystemTimeAsFileTime GetTickCount "
        "QueryPerformanceCounter SetLastError Sleep SysStringLen VariantInit VerSetConditionMask",
    "cuts or looks at a path in memory, and has no way to fail":
        "PathFindFileNameW PathIsRelativeW PathRemoveExtensionW PathRemoveFileSpecW",
    "speaks to a debugger, and returns nothing":
        "DebugBreak IsDebuggerPresent OutputDebugStringA OutputDebugStringW",
    "waits without a limit, and has no way to fail":
        "AcquireSRWLockExclusive DeleteCriticalSection EnterCriticalSection InitializeCriticalSection "
        "LeaveCriticalSection ReleaseSRWLockExclusive SleepConditionVariableSRW WakeAllConditionVariable",
    "carries an exception to its handler: without it there is none":
        "RaiseException RtlCaptureContext RtlLookupFunctionEntry RtlUnwindEx RtlVirtualUnwind",
    "cuts the log's file back if the disk is full, with any error ignored: full_disk_tests.py":
        "SetEndOfFile",
    "comes along with the texts of the C++ library's system errors: only that of a lock, which does not fail, is asked":
        "FormatMessageA",
    "is the toolchain's own, for its start and end":
        "GetModuleHandleW TlsGetValue VirtualProtect VirtualQuery",
}

OF_THE_C_RUNTIME = {
    "memory, which fails in EveryAllocation":
        "calloc free malloc memchr memcmp memcpy memmove memset realloc",
    "its start and end, and the last words of a process":
        "__iob_func _amsg_exit _initterm _lock _unlock abort fwrite vfprintf",
    "texts and characters in memory":
        "_vsnwprintf isalnum isalpha isprint isspace isupper iswalnum iswdigit iswspace strcmp strerror strlen strncmp "
        "towlower towupper wcslen",
    "the calendar, for times that it can split and dates that it can count":
        "_errno _gmtime64 _mktime64",
    "comes along with the C++ library's random numbers, and is not asked":
        "_close _read",
}

WITH_CLANG = {"comes along with the C++ library's answer to a call of a pure virtual function, which g++ leaves out": "_write"}


def names_in(groups: dict[str, str]) -> list[str]:
    return [name for names in groups.values() for name in names.split()]


def names_made_to_fail() -> list[str]:
    source = (ROOT / "tests" / "faults" / "PlatformCalls.cpp").read_text()
    rows = re.findall(r'Fails\(\[\] \{\},\s*\w+,\s*[\w".]+,\s*"(\w+)"', source)
    if len(rows) != source.count("Fails([] {}"):
        raise AssertionError("not all rows are understood")
    return rows
