#include "lumeq/view/Alignment.h"

#include <gmock/gmock.h>

namespace Zuvan::Lumeq::Tool {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// A letter for each element.
Pairs AlignLetters(std::string_view a, std::string_view b) {
    const auto split = [](std::string_view letters) {
        std::vector<std::string> texts;
        for (const char letter : letters)
            texts.emplace_back(1, letter);
        return texts;
    };
    return Align(split(a), split(b));
}

std::vector<std::string> NumberedTexts(std::size_t count, const std::string& prefix) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i)
        texts.push_back(prefix + std::to_string(i));
    return texts;
}

} // namespace

TEST(Alignment, PairsWhatIsEqualInOrder) {
    EXPECT_THAT(AlignLetters("", "abc"), IsEmpty());
    EXPECT_THAT(AlignLetters("abc", "abc"), ElementsAre(Pair(0, 0), Pair(1, 1), Pair(2, 2)));
    EXPECT_THAT(AlignLetters("abcd", "bxd"), ElementsAre(Pair(1, 0), Pair(3, 2)));
    EXPECT_THAT(AlignLetters("abc", "xyz"), IsEmpty());
}

TEST(Alignment, FindsTheLongestPairing) {
    EXPECT_EQ(AlignLetters("xaybzc", "abczyx").size(), 3u);
    EXPECT_EQ(AlignLetters("aabbaabb", "bbaabbaa").size(), 6u);
}

TEST(Alignment, LongListsAreDividedByWhatEachHasOnce) {
    // The table of all pairs would have 25 million cells.
    std::vector<std::string> a = NumberedTexts(5000, "call "), b = a;
    a.front() = "first of a";
    a.back() = "last of a";
    b.erase(b.begin() + 1000, b.begin() + 1100);
    b.insert(b.begin() + 3000, "only in b");
    const Pairs pairs = Align(a, b);
    EXPECT_EQ(pairs.size(), 4898u);
    for (const auto& [i, j] : pairs)
        ASSERT_EQ(a[i], b[j]);
}

TEST(Alignment, LongListsWithNothingInCommonHaveNoPairs) {
    EXPECT_THAT(Align(NumberedTexts(3000, "a"), NumberedTexts(3000, "b")), IsEmpty());
}

} // namespace Zuvan::Lumeq::Tool
