// The catalogue against the library's own patterns and enumerations.
#include "lumeq/Catalogue.h"
#include "lumeq/LibraryTables.h"
#include "lumeq/PatternLanguage.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Tool {

namespace {

const Catalogue& CatalogueOfTheTree() {
    static const Catalogue catalogue = Catalogue::ReadFrom(LUMEQ_CATALOGUE);
    return catalogue;
}

std::vector<std::string> NamesIn(const Json& object) {
    std::vector<std::string> names;
    for (const auto& [name, entry] : object.items())
        names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST(LibraryTables, HaveThePatternsOfTheCatalogue) {
    EXPECT_EQ(LibraryPatternNames(), NamesIn(CatalogueOfTheTree().Patterns()));
}

TEST(LibraryTables, HaveTheEnumerationsOfTheCatalogue) {
    EXPECT_EQ(LibraryEnumerationNames(), NamesIn(CatalogueOfTheTree().Enumerations()));
}

TEST(LibraryTables, EachPatternAcceptsWhatItsExpressionInTheCatalogueAccepts) {
    for (const auto& [name, pattern] : CatalogueOfTheTree().Patterns().items()) {
        const PatternLanguage written(SampleHost::ReadText(pattern.at("expression")),
                                      pattern.at("ignoresCase").get<bool>());
        const PatternLanguage its(LibraryPattern(name));
        EXPECT_EQ(AcceptedOnlyBy(written, its), std::nullopt) << name;
        EXPECT_EQ(AcceptedOnlyBy(its, written), std::nullopt) << name;
    }
}

TEST(LibraryTables, EachPatternDecidesOnItsExamplesAsTheCatalogueSays) {
    for (const auto& [name, pattern] : CatalogueOfTheTree().Patterns().items())
        for (const char* verdict : {"accepted", "refused"})
            for (const Json& text : pattern.at(verdict))
                EXPECT_EQ(LibraryPattern(name).Matches(SampleHost::ReadText(text)), *verdict == 'a')
                    << name << " " << text;
}

TEST(LibraryTables, EachValueHasTheTextAndTheNumberOfTheCatalogue) {
    for (const auto& [name, enumeration] : CatalogueOfTheTree().Enumerations().items()) {
        const LibraryEnumeration& its = EnumerationOfLibrary(name);
        std::int32_t next = 0;
        for (const Json& row : enumeration.at("values")) {
            const auto value = row.at("value").get<std::int32_t>();
            EXPECT_EQ(value, next++) << name;
            ASSERT_TRUE(its.hasValue(value)) << name << " " << value;
            EXPECT_EQ(SampleHost::ToUtf8(its.textOf(value)), row.at("text")) << name;
            EXPECT_EQ(its.recordOf(value), row.at("record")) << name;
        }
        EXPECT_FALSE(its.hasValue(next)) << name;
        EXPECT_FALSE(its.hasValue(-1)) << name;
    }
}

} // namespace Zuvan::Lumeq::Tool
