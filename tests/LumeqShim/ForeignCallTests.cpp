#include "LumeqShim/ForeignCall.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace Zuvan::LumeqShim {

namespace {

constexpr DWORD Runtime4 = 0xE0434352;
constexpr DWORD Runtime2 = 0xE0434F4D;

void Raise(DWORD code) { RaiseException(code, 0, 0, nullptr); }

/// Frames between the guard and the exception, which it has to leave.
void RaiseFromDeep(DWORD code, int depth) {
    volatile int frame = depth;
    if (frame > 0)
        RaiseFromDeep(code, frame - 1);
    else
        Raise(code);
    frame = 0;
}

bool IsCaught(DWORD code) {
    try {
        CallForeign([code] { RaiseFromDeep(code, 5); });
        return false;
    } catch (const ManagedException&) {
        return true;
    }
}

/// Counts what arrives at the process, whose end it prevents: the call that raised it returns.
class ProcessFilter {
public:
    ProcessFilter() : _previous(SetUnhandledExceptionFilter(&Count)) { codes.clear(); }
    ~ProcessFilter() { SetUnhandledExceptionFilter(_previous); }

    static inline std::vector<DWORD> codes;

private:
    static LONG WINAPI Count(EXCEPTION_POINTERS* exception) {
        codes.push_back(exception->ExceptionRecord->ExceptionCode);
        return EXCEPTION_CONTINUE_EXECUTION;
    }

    LPTOP_LEVEL_EXCEPTION_FILTER _previous;
};

} // namespace

TEST(ForeignCall, ReturnsWhatTheCallReturns) {
    EXPECT_EQ(CallForeign([] { return 7; }), 7);
    bool called = false;
    CallForeign([&called] { called = true; });
    EXPECT_TRUE(called);
}

TEST(ForeignCall, CatchesExceptionsOfBothGenerationsOfTheManagedRuntime) {
    EXPECT_TRUE(IsCaught(Runtime4));
    EXPECT_TRUE(IsCaught(Runtime2));
}

TEST(ForeignCall, CatchesAThousandInARowOnAnyThread) {
    int caught = 0;
    const auto catchThousand = [&caught] {
        for (int i = 0; i < 1000; ++i)
            caught += IsCaught(i % 2 == 0 ? Runtime4 : Runtime2);
    };
    catchThousand();
    std::thread(catchThousand).join();
    EXPECT_EQ(caught, 2000);
}

TEST(ForeignCall, KeepsTheRegistersOfItsCaller) {
    // So many that are live across the call that some live in registers.
    int a = 1, b = 2, c = 3, d = 4, e = 5, f = 6, g = 7, h = 8;
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(IsCaught(Runtime4));
        a += b, b += c, c += d, d += e, e += f, f += g, g += h, h += 1;
    }
    EXPECT_EQ(a + b + c + d + e + f + g + h, 277);
}

TEST(ForeignCall, IsNoStandardException) {
    EXPECT_THROW(
        {
            try {
                CallForeign([] { Raise(Runtime4); });
            } catch (const std::exception&) {
                FAIL() << "its text would be logged";
            }
        },
        ManagedException);
}

TEST(ForeignCall, LetsCppExceptionsThrough) {
    EXPECT_THROW(CallForeign([] { throw std::runtime_error("from below"); }), std::runtime_error);
    EXPECT_THROW(CallForeign([]() -> int { throw 42; }), int);
}

TEST(ForeignCall, LetsEveryOtherStructuredExceptionThrough) {
    const ProcessFilter filter;
    std::vector<DWORD> raised;
    for (const DWORD code :
         {EXCEPTION_ACCESS_VIOLATION, EXCEPTION_STACK_OVERFLOW, EXCEPTION_BREAKPOINT,
          EXCEPTION_ILLEGAL_INSTRUCTION, DWORD{0x40010006}, Runtime4 + 1, Runtime2 - 1, DWORD{0xE06D7363}}) {
        raised.push_back(code);
        CallForeign([code] { Raise(code); });
    }
    EXPECT_EQ(ProcessFilter::codes, raised);
}

TEST(ForeignCall, GuardsInsideGuardsCatchTheirOwn) {
    const bool outer = CallForeign([] { return IsCaught(Runtime4); });
    EXPECT_TRUE(outer);
    EXPECT_THROW(CallForeign([] { CallForeign([] { Raise(Runtime2); }); }), ManagedException);
}

} // namespace Zuvan::LumeqShim
