#include "LumeqLib/Extra/Eventing/EventObject.h"

#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

using ObjectFactory = EventObject (*)(const std::wstring&, std::unique_ptr<EventDetails>);

struct NamedFactory {
    ObjectFactory make;
    const wchar_t* word;
};

constexpr NamedFactory Unchecked[] = {
    {MakeAdObject, L"ad"},         {MakeButtonObject, L"button"}, {MakeCheckboxObject, L"checkbox"},
    {MakeScreenObject, L"screen"}, {MakeTileObject, L"tile"},
};

std::unique_ptr<EventDetails> SomeDetails() { return std::make_unique<CountedDetails>(OneField(L"d", L"1")); }

std::wstring Refusal(ObjectFactory make, const std::wstring& label) {
    return FullMessageOf<Common::ArgumentException>([&] { make(label, SomeDetails()); });
}

} // namespace

TEST(EventObject, FiveKindsTakeAnyLabel) {
    for (const NamedFactory& factory : Unchecked) {
        const EventObject object = factory.make(L"any ? label", nullptr);
        EXPECT_EQ(object.Word(), factory.word);
        EXPECT_EQ(object.Label(), L"any ? label");
        EXPECT_EQ(object.CloneDetails(), nullptr);
    }
}

TEST(EventObject, HyperlinkTakesAWellFormedLabel) {
    const EventObject object = MakeHyperlinkObject(L"/main.flow/a/b/Screen-edit#url_privacy-link", nullptr);
    EXPECT_EQ(object.Word(), L"hyperlink");
    EXPECT_EQ(object.Label(), L"/main.flow/a/b/Screen-edit#url_privacy-link");
}

TEST(EventObject, UrlTakesAWellFormedLabel) {
    const EventObject object = MakeUrlObject(L"https://example.test/a", nullptr);
    EXPECT_EQ(object.Word(), L"url");
    EXPECT_EQ(object.Label(), L"https://example.test/a");
}

TEST(EventObject, TakesTheDetailsOver) {
    std::unique_ptr<EventDetails> details = SomeDetails();
    EXPECT_EQ(CountedDetails::alive, 1);
    {
        const EventObject object = MakeAdObject(L"label", std::move(details));
        EXPECT_EQ(details, nullptr);
        EXPECT_EQ(CountedDetails::alive, 1);
        EXPECT_EQ(Show(object.CloneDetails()->Data()), L"{d: \"1\"}");
    }
    EXPECT_EQ(CountedDetails::alive, 0);
}

TEST(EventObject, HyperlinkRefusesALabelAndDestroysTheDetails) {
    EXPECT_EQ(Refusal(MakeHyperlinkObject, L"/Screen#privacy"),
              L"objectLabel is not formatted correctly. Must be of form "
              L"[/<Flow>.flow][/<ScreenPath>]/<ScreenName>[-<Mode>]#url_<ControlName>"
              L"\nParameter name: objectLabel");
    EXPECT_EQ(CountedDetails::alive, 0);
}

TEST(EventObject, UrlRefusesALabelAndDestroysTheDetails) {
    EXPECT_EQ(Refusal(MakeUrlObject, L"https://example.test/a?b"),
              L"objectLabel is not formatted correctly. Must be of form ^(file|https?)://[^?]+$"
              L"\nParameter name: objectLabel");
    EXPECT_EQ(CountedDetails::alive, 0);
}

} // namespace Zuvan::Lumeq::Extra::Eventing
