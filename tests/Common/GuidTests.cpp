#include "Common/Guid.h"

#include <gtest/gtest.h>

#include <regex>

namespace Zuvan::Lumeq::Common {

TEST(NewGuidString, IsBracedUpperCaseAndNewEachTime) {
    const std::wregex form(L"\\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\}");
    const std::wstring first = NewGuidString();
    const std::wstring second = NewGuidString();
    EXPECT_TRUE(std::regex_match(first, form));
    EXPECT_TRUE(std::regex_match(second, form));
    EXPECT_NE(first, second);
}

} // namespace Zuvan::Lumeq::Common
