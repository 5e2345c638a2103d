// A host that crashes inside Lumeq.dll, because it completes a task that it never began, and leaves a
// minidump.
//   crash-host DUMP
#include <windows.h>

#include <dbghelp.h>

#include <Lumeq/LumeqApi.h>

namespace {

const wchar_t* dumpPath;

LONG WINAPI WriteDump(EXCEPTION_POINTERS* exception) {
    const HANDLE file =
        CreateFileW(dumpPath, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    MINIDUMP_EXCEPTION_INFORMATION information{GetCurrentThreadId(), exception, FALSE};
    const BOOL written = MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal,
                                           &information, nullptr, nullptr);
    CloseHandle(file);
    TerminateProcess(GetCurrentProcess(), written ? 42 : 1);
    return EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2)
        return 2;
    dumpPath = arguments[1];
    SetUnhandledExceptionFilter(WriteDump);
    using namespace Zuvan::Lumeq;
    auto neverBegun = reinterpret_cast<API::TaskHandle>(0x10);
    API::ScanAcquireCompleted(&neverBegun, L"success", API::Scan::ShortcutType::save_pdf,
                              API::Scan::ShortcutVarianceType::original, API::Scan::ItemType::document,
                              API::Scan::ResolutionType::dpi_300, API::Scan::ColorModeType::color,
                              API::Scan::PageSizeType::a4, API::Scan::SourceType::flatbed,
                              API::Scan::MimeType::application_pdf, {}, 3);
    return 0;
}
