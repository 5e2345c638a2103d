#include "faults/QuickSystem.h"

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr char KernelLibrary[] = "kernel32.dll";

int place;
const HANDLE Mutex = &place; // The system has no handle with such a value.

HANDLE WINAPI CreateOwnMutex(SECURITY_ATTRIBUTES*, BOOL, const wchar_t*) { return Mutex; }

DWORD WINAPI WaitUnlessMutex(HANDLE object, DWORD milliseconds) {
    return object == Mutex ? WAIT_OBJECT_0 : WaitForSingleObject(object, milliseconds);
}

BOOL WINAPI ReleaseNothing(HANDLE) { return TRUE; }

BOOL WINAPI CloseUnlessMutex(HANDLE object) { return object == Mutex || CloseHandle(object); }

} // namespace

QuickSystem::QuickSystem(HMODULE module)
    : _createMutex(module, KernelLibrary, "CreateMutexW", &CreateOwnMutex),
      _wait(module, KernelLibrary, "WaitForSingleObject", &WaitUnlessMutex),
      _releaseMutex(module, KernelLibrary, "ReleaseMutex", &ReleaseNothing),
      _closeHandle(module, KernelLibrary, "CloseHandle", &CloseUnlessMutex),
      _flush(module, KernelLibrary, "FlushFileBuffers", &ReleaseNothing),
      _debugNarrow(module, KernelLibrary, "OutputDebugStringA", [](const char*) {}),
      _debugWide(module, KernelLibrary, "OutputDebugStringW", [](const wchar_t*) {}) {}

} // namespace Zuvan::Lumeq::Testing
