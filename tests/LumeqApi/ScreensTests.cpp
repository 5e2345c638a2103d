#include "LumeqApi/Screens.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::API {

namespace {

std::wstring Label(const wchar_t* flow, const wchar_t* screenPath, const wchar_t* mode,
                   const wchar_t* control, const wchar_t* mark = ControlMark) {
    const std::wstring screenName = L"Home";
    const ScreenArguments screen{flow, screenPath, screenName, mode};
    if (!control)
        return ScreenLabel(screen);
    const std::wstring controlName = control;
    return ControlLabel({screen, controlName}, mark);
}

} // namespace

TEST(ScreenLabel, NameAloneFollowsASlash) { EXPECT_EQ(Label(nullptr, nullptr, nullptr, nullptr), L"/Home"); }

TEST(ScreenLabel, EmptyPartsAddNothing) { EXPECT_EQ(Label(L"", L"", L"", nullptr), L"/Home"); }

TEST(ScreenLabel, HasAllFivePartsInOrder) {
    EXPECT_EQ(Label(L"setup", L"a/b", L"edit", L"ok"), L"/setup.flow/a/b/Home-edit#ok");
}

TEST(ScreenLabel, HyperlinkHasItsOwnMark) {
    EXPECT_EQ(Label(nullptr, nullptr, nullptr, L"help", HyperlinkMark), L"/Home#url_help");
}

} // namespace Zuvan::Lumeq::API
