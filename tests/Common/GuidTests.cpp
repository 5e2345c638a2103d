#include "Common/Guid.h"

#include "support/ImportedFunction.h"
#include "support/TextShape.h"

#include <gtest/gtest.h>

#include <objbase.h>
#include <rpc.h>

namespace Zuvan::Lumeq::Common {

TEST(NewGuidString, IsBracedUpperCaseAndNewEachTime) {
    constexpr wchar_t Digits[] = L"0123456789ABCDEF";
    constexpr wchar_t Form[] = L"{########-####-####-####-############}";
    const std::wstring first = NewGuidString();
    const std::wstring second = NewGuidString();
    EXPECT_EQ(Testing::ShapeOf(first, Digits), Form);
    EXPECT_EQ(Testing::ShapeOf(second, Digits), Form);
    EXPECT_NE(first, second);
}

TEST(NewGuidString, OfASystemThatMakesNoneIsAllZeros) {
    const Testing::ImportedFunction<decltype(UuidCreate)> failing(
        "rpcrt4.dll", "UuidCreate", [](UUID*) -> RPC_STATUS { return RPC_S_UUID_NO_ADDRESS; });
    EXPECT_EQ(NewGuidString(), L"{00000000-0000-0000-0000-000000000000}");
}

TEST(NewGuidString, ThatCannotBeWrittenIsEmpty) {
    const Testing::ImportedFunction<decltype(StringFromGUID2)> failing(
        "ole32.dll", "StringFromGUID2", [](const GUID&, wchar_t*, int) -> int { return 0; });
    EXPECT_EQ(NewGuidString(), L"");
}

} // namespace Zuvan::Lumeq::Common
