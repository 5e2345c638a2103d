// The patterns on the platform's own tables of characters, where letters are more than those of ASCII.
#include "fuzz/support/ExportPatterns.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>

namespace Zuvan::Lumeq::API {

namespace {

using Fuzzing::Kind;

constexpr std::size_t TextsForEach = 1500;

/// What patterns tell apart, and characters that are letters or digits or white space of one kind or another,
/// or that have another case in ASCII.
constexpr wchar_t Units[] =
    L"aZ09_-./\\ :?#\t\u00a0\u00aa\u00df\u00e9\u00c9\u0130\u0131\u017f\u0391\u03c2\u0431"
    L"\u0661\u0f20\u2003\u2028\u212a\u3042\u6f22\uff11\uff41\ufffd\xd83d\xde00\x85\x9f";

std::wstring ShortText(std::mt19937& random, std::size_t longest) {
    std::wstring text(random() % longest, L'\0');
    for (wchar_t& unit : text)
        unit = Units[random() % (std::size(Units) - 1)];
    return text;
}

void CompareOnRandomTexts(std::size_t index) {
    std::mt19937 random(static_cast<std::mt19937::result_type>(index));
    for (std::size_t i = 0; i < TextsForEach; ++i) {
        const std::wstring text = ShortText(random, 8);
        ASSERT_EQ(Fuzzing::ExportPatterns[index]->Matches(text),
                  Fuzzing::PlainlyMatches(static_cast<Kind>(index), text))
            << "pattern " << index << ": " << testing::PrintToString(text);
    }
}

} // namespace

TEST(PlainEngine, AcceptsTheSameTextsOfAnyAlphabet) {
    for (std::size_t i = 0; i < std::size(Fuzzing::ExportPatterns); ++i)
        CompareOnRandomTexts(i);
}

} // namespace Zuvan::Lumeq::API
