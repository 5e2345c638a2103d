#include "LumeqShim/ForeignCall.h"

#include <windows.h>

namespace {

/// The runtime's code since version 4 is the letters "CCR", before that "COM".
bool IsManaged(DWORD code) {
    constexpr DWORD Runtime4 = 0xE0434352;
    constexpr DWORD Runtime2 = 0xE0434F4D;
    return code == Runtime4 || code == Runtime2;
}

} // namespace

#ifdef _MSC_VER

extern "C" bool LumeqCallGuarded(void (*function)(void*), void* argument) {
    __try {
        function(argument);
        return true;
    } __except (IsManaged(GetExceptionCode()) ? EXCEPTION_EXECUTE_HANDLER : EXCEPTION_CONTINUE_SEARCH) {
        return false;
    }
}

#else

// GCC has no __try. So the frame is written in assembler, because a frame's handler is named there.
asm(R"(
    .text
    .globl LumeqCallGuarded
    .def LumeqCallGuarded; .scl 2; .type 32; .endef
    .seh_proc LumeqCallGuarded
LumeqCallGuarded:
    subq $40, %rsp
    .seh_stackalloc 40
    .seh_endprologue
    .seh_handler LumeqGuardHandler, @except
    movq %rcx, %rax
    movq %rdx, %rcx
    call *%rax
    movl $1, %eax
    .globl LumeqGuardLanding
LumeqGuardLanding:
    addq $40, %rsp
    ret
    .seh_endproc
)");

extern "C" void LumeqGuardLanding();

/// The handler of the frame above: asked by the system for each exception that passes through, first while it
/// searches for a handler, then while it unwinds. Unwinds to the landing with false as the result.
extern "C" EXCEPTION_DISPOSITION LumeqGuardHandler(EXCEPTION_RECORD* record, void* frame, CONTEXT* context,
                                                   DISPATCHER_CONTEXT* dispatcher) {
    constexpr DWORD Unwinding = 0x66; // EXCEPTION_UNWIND of the system's headers, which not every one has
    if ((record->ExceptionFlags & Unwinding) == 0 && IsManaged(record->ExceptionCode))
        RtlUnwindEx(frame, reinterpret_cast<void*>(&LumeqGuardLanding), record, nullptr, context,
                    dispatcher->HistoryTable);
    return ExceptionContinueSearch;
}

#endif
