#include "support/DebuggerStandIn.h"

#include "Common/SystemHandles.h"

#include <atomic>
#include <mutex>
#include <numeric>
#include <winternl.h>

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr DWORD NarrowTextSent = 0x40010006;
constexpr DWORD CppExceptionThrown = 0x20474343; // raised by GCC's unwinder

std::atomic<int> breaks{0};
std::mutex textsLock;
std::vector<std::string> texts;
void* handler = nullptr;

// Held from the moment a throw is noticed until it is raised again without the flag, so that two threads
// never change the flag at once.
SRWLOCK throwLock = SRWLOCK_INIT;

void SetDebuggerFlag(bool present) {
    static const auto currentPeb =
        Common::FindFunction<PEB * NTAPI()>(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb");
    currentPeb()->BeingDebugged = present;
}

LONG StepOverBreak(CONTEXT& context) {
    breaks.fetch_add(1);
    constexpr BYTE Int3 = 0xCC;
    if (*reinterpret_cast<const BYTE*>(context.Rip) == Int3)
        ++context.Rip;
    return EXCEPTION_CONTINUE_EXECUTION;
}

LONG KeepText(const EXCEPTION_RECORD& record) {
    const std::lock_guard guard(textsLock);
    texts.emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
    return EXCEPTION_CONTINUE_EXECUTION;
}

// Runs RaiseException again from the frame that called it, with the flag cleared, because the unwinder then
// works.
LONG RaiseAgainUnflagged(const EXCEPTION_RECORD& record, CONTEXT& context) {
    static thread_local bool raisedAgain = false;
    static thread_local ULONG_PTR arguments[EXCEPTION_MAXIMUM_PARAMETERS];
    if (raisedAgain) {
        raisedAgain = false;
        SetDebuggerFlag(true);
        ReleaseSRWLockExclusive(&throwLock);
        return EXCEPTION_CONTINUE_SEARCH;
    }
    AcquireSRWLockExclusive(&throwLock);
    raisedAgain = true;
    SetDebuggerFlag(false);
    const DWORD count = record.NumberParameters;
    const DWORD flags = record.ExceptionFlags;
    for (DWORD i = 0; i < count; ++i)
        arguments[i] = record.ExceptionInformation[i];

    DWORD64 base = 0;
    void* handlerData = nullptr;
    DWORD64 establisher = 0;
    auto* function = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
    RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handlerData, &establisher,
                     nullptr);
    context.Rsp -= sizeof(void*);
    context.Rip = reinterpret_cast<DWORD64>(&RaiseException);
    context.Rcx = CppExceptionThrown;
    context.Rdx = flags;
    context.R8 = count;
    context.R9 = reinterpret_cast<DWORD64>(arguments);
    return EXCEPTION_CONTINUE_EXECUTION;
}

LONG CALLBACK Handle(EXCEPTION_POINTERS* pointers) {
    switch (pointers->ExceptionRecord->ExceptionCode) {
    case EXCEPTION_BREAKPOINT:
        return StepOverBreak(*pointers->ContextRecord);
    case NarrowTextSent:
        return KeepText(*pointers->ExceptionRecord);
    case CppExceptionThrown:
        return RaiseAgainUnflagged(*pointers->ExceptionRecord, *pointers->ContextRecord);
    default:
        return EXCEPTION_CONTINUE_SEARCH;
    }
}

} // namespace

DebuggerStandIn::DebuggerStandIn() {
    breaks = 0;
    texts.clear();
    handler = AddVectoredExceptionHandler(1, &Handle);
    SetDebuggerFlag(true);
}

DebuggerStandIn::~DebuggerStandIn() {
    SetDebuggerFlag(false);
    RemoveVectoredExceptionHandler(handler);
}

int DebuggerStandIn::Breaks() const { return breaks; }

std::vector<std::string> DebuggerStandIn::Texts() const {
    const std::lock_guard guard(textsLock);
    return texts;
}

std::string DebuggerStandIn::Output() const {
    const std::vector<std::string> all = Texts();
    return std::accumulate(all.begin(), all.end(), std::string());
}

} // namespace Zuvan::Lumeq::Testing
