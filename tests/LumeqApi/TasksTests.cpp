#include "LumeqApi/Tasks.h"

#include "Common/Exceptions.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::API {

namespace {

/// Keeps what its constructor takes for each kind of argument.
struct KeptDetails {
    Extra::Eventing::ConnectionScenario scenario;
    Extra::Eventing::ConnectionMethod method;
    std::wstring text;
    ScanFeatureMap features;
    std::int32_t pages;

    KeptDetails(Extra::Eventing::ConnectionScenario scenario, Extra::Eventing::ConnectionMethod method,
                const std::wstring& text, ScanFeatureMap features, std::int32_t pages)
        : scenario(scenario), method(method), text(text), features(std::move(features)), pages(pages) {}
};

KeptDetails Make(ConnectionScenarioType scenarioType, ConnectionMethodType methodType) {
    const std::wstring text = L"text";
    const ScanFeatureMap features{{L"crop", true}};
    const Traced scenario{L"scenarioType", scenarioType};
    const Traced method{L"methodType", methodType};
    const Required required{L"text", text, paperSizePattern};
    const Traced map{L"features", features};
    const PageCount pages{3};
    return MakeDetails<KeptDetails>(std::tie(scenario, method, required, map, pages));
}

} // namespace

TEST(MakeDetails, ConvertsEachRowForTheConstructor) {
    const KeptDetails details = Make(ConnectionScenarioType::add, ConnectionMethodType::usb);
    EXPECT_EQ(static_cast<int>(details.scenario), 2);
    EXPECT_EQ(static_cast<int>(details.method), 1);
    EXPECT_EQ(details.text, L"text");
    EXPECT_EQ(details.features, (ScanFeatureMap{{L"crop", true}}));
    EXPECT_EQ(details.pages, 3);
}

// Readers of the log know which undefined value names itself.
TEST(MakeDetails, ConvertsTheLastRowFirst) {
    try {
        Make(static_cast<ConnectionScenarioType>(77), static_cast<ConnectionMethodType>(99));
        FAIL() << "nothing was thrown";
    } catch (const Common::ArgumentOutOfRangeException& thrown) {
        EXPECT_STREQ(thrown.what(), "[Undefined ConnectionMethodType: 99]");
    }
}

} // namespace Zuvan::Lumeq::API
