#include "faults/QuickSystem.h"

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr char Library[] = "kernel32.dll";

int place;
const HANDLE Mutex = &place; // No handle of the system's is such an address.

HANDLE WINAPI CreateOwnMutex(SECURITY_ATTRIBUTES*, BOOL, const wchar_t*) { return Mutex; }

DWORD WINAPI WaitUnlessMutex(HANDLE object, DWORD milliseconds) {
    return object == Mutex ? WAIT_OBJECT_0 : WaitForSingleObject(object, milliseconds);
}

BOOL WINAPI ReleaseNothing(HANDLE) { return TRUE; }

BOOL WINAPI CloseUnlessMutex(HANDLE object) { return object == Mutex || CloseHandle(object); }

} // namespace

QuickSystem::QuickSystem(HMODULE module)
    : _createMutex(module, Library, "CreateMutexW", &CreateOwnMutex),
      _wait(module, Library, "WaitForSingleObject", &WaitUnlessMutex),
      _releaseMutex(module, Library, "ReleaseMutex", &ReleaseNothing),
      _closeHandle(module, Library, "CloseHandle", &CloseUnlessMutex),
      _flush(module, Library, "FlushFileBuffers", &ReleaseNothing),
      _debugNarrow(module, Library, "OutputDebugStringA", [](const char*) {}),
      _debugWide(module, Library, "OutputDebugStringW", [](const wchar_t*) {}) {}

} // namespace Zuvan::Lumeq::Testing
