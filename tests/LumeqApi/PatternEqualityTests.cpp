// Each table of a pattern against the standard library's automaton of the same text, for all texts.
#include "LumeqLib/Extra/Eventing/EventingTask.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "LumeqLib/Extra/Eventing/TaskDetails.h"
#include "fuzz/support/ExportPatterns.h"
#include "support/StandardAutomaton.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <vector>

namespace Zuvan::Lumeq::API {

namespace {

using Common::Pattern;
using Common::PatternRows;
using Fuzzing::Kind;
using Testing::StandardAutomaton;

const Pattern& PatternOf(Kind kind) {
    const Pattern* const ofClasses[] = {
        &Extra::Eventing::hyperlinkLabelPattern,  &Extra::Eventing::urlLabelPattern,
        &Extra::Eventing::reportMonikerPattern,   &Extra::Eventing::formMonikerPattern,
        &Extra::Eventing::completedResultPattern, &Extra::Eventing::recordedVersionPattern};
    const auto index = static_cast<std::size_t>(kind);
    constexpr std::size_t Exports = std::size(Fuzzing::ExportPatterns);
    static_assert(Exports + std::size(ofClasses) == Fuzzing::KindCount);
    return index < Exports ? *Fuzzing::ExportPatterns[index] : *ofClasses[index - Exports];
}

/// A copy of a pattern's table that a test can spoil.
class SpoiledTable {
public:
    explicit SpoiledTable(const Pattern& pattern)
        : _original(pattern.Rows()), classes(_original.classOfSymbol, _original.classOfSymbol + 0xA0),
          rows(_original.rows, _original.rows + _original.size) {}

    PatternRows Rows() const {
        PatternRows spoiled = _original;
        spoiled.classOfSymbol = classes.data();
        spoiled.rows = rows.data();
        return spoiled;
    }

private:
    PatternRows _original;

public:
    std::vector<std::uint8_t> classes;
    std::vector<std::uint16_t> rows;
};

/// How many of the tables in which one entry leads to the next state instead pass for the pattern.
int WrongRowsUnnoticed(Kind kind) {
    const StandardAutomaton standard(Fuzzing::PlainRegex(kind));
    SpoiledTable table(PatternOf(kind));
    int unnoticed = 0;
    for (std::uint16_t& entry : table.rows) {
        const std::uint16_t right = entry;
        entry = static_cast<std::uint16_t>((right + table.Rows().classes) % table.rows.size());
        unnoticed += !standard.FirstDifference(table.Rows());
        entry = right;
    }
    return unnoticed;
}

/// The same for a symbol of ASCII that is of another class.
int WrongClassesUnnoticed(Kind kind) {
    const StandardAutomaton standard(Fuzzing::PlainRegex(kind));
    SpoiledTable table(PatternOf(kind));
    int unnoticed = 0;
    for (std::size_t symbol = 0; symbol < 0x80; ++symbol) {
        const std::uint8_t right = table.classes[symbol];
        table.classes[symbol] = static_cast<std::uint8_t>((right + 1) % table.Rows().classes);
        unnoticed += !standard.FirstDifference(table.Rows());
        table.classes[symbol] = right;
    }
    return unnoticed;
}

} // namespace

TEST(PatternEquality, EachTableAcceptsWhatTheStandardAutomatonDoes) {
    for (std::size_t i = 0; i < Fuzzing::KindCount; ++i) {
        const auto kind = static_cast<Kind>(i);
        const auto difference =
            StandardAutomaton(Fuzzing::PlainRegex(kind)).FirstDifference(PatternOf(kind).Rows());
        EXPECT_FALSE(difference) << "pattern " << i << ": " << testing::PrintToString(*difference);
    }
}

TEST(PatternEquality, AnyWrongEntryOfATableIsNoticed) {
    for (const Kind kind : {Kind::ControlName, Kind::Mode, Kind::Subpath, Kind::TaskResult})
        EXPECT_EQ(WrongRowsUnnoticed(kind), 0) << static_cast<int>(kind);
}

TEST(PatternEquality, AnyCharacterInAWrongClassIsNoticed) {
    for (const Kind kind : {Kind::Biid, Kind::ControlName, Kind::Subpath, Kind::Url})
        EXPECT_EQ(WrongClassesUnnoticed(kind), 0) << static_cast<int>(kind);
}

TEST(PatternEquality, TheShortestTextOnWhichTwoDifferIsNamed) {
    SpoiledTable table(taskResultPattern);
    const StandardAutomaton standard(Fuzzing::PlainRegex(Kind::TaskResult));
    std::swap(table.classes['5'], table.classes['_']);
    EXPECT_EQ(standard.FirstDifference(table.Rows()), L"error50");
    EXPECT_EQ(standard.FirstDifference(biidPattern.Rows()), L"error");
    EXPECT_EQ(standard.FirstDifference(taskResultPattern.Rows()), std::nullopt);
}

TEST(PatternEquality, ASingleCharacterBeyondAsciiIsEnough) {
    const StandardAutomaton ofUrl(Fuzzing::PlainRegex(Kind::ReportMoniker));
    SpoiledTable table(Extra::Eventing::reportMonikerPattern);
    PatternRows withoutSeparators = table.Rows();
    withoutSeparators.traits = 0;
    table.classes[0x80 + 16] = table.classes[0x80];
    withoutSeparators.classOfSymbol = table.classes.data();
    EXPECT_EQ(ofUrl.FirstDifference(withoutSeparators), L"x-a_a_report_a/0\x2028"
                                                        L"0");
}

} // namespace Zuvan::Lumeq::API
