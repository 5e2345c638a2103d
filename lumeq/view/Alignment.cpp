#include "lumeq/view/Alignment.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace Zuvan::Lumeq::Tool {

namespace {

using Texts = std::vector<std::string>;

struct Range {
    std::size_t begin, end;

    std::size_t Size() const { return end - begin; }
};

/// Beyond this the table of all pairs takes too much memory.
constexpr std::size_t MostCells = 4'000'000;

class Aligner {
public:
    Aligner(const Texts& a, const Texts& b) : _a(a), _b(b) {}

    void Align(Range a, Range b) {
        for (; a.Size() > 0 && b.Size() > 0 && _a[a.begin] == _b[b.begin]; ++a.begin, ++b.begin)
            pairs.emplace_back(a.begin, b.begin);
        Pairs tail;
        for (; a.Size() > 0 && b.Size() > 0 && _a[a.end - 1] == _b[b.end - 1]; --a.end, --b.end)
            tail.emplace_back(a.end - 1, b.end - 1);
        if (a.Size() * b.Size() <= MostCells)
            AlignByTable(a, b);
        else
            AlignByAnchors(a, b);
        pairs.insert(pairs.end(), tail.rbegin(), tail.rend());
    }

    Pairs pairs;

private:
    void AlignByTable(Range a, Range b) {
        // The longest pairing of what follows each place.
        const std::size_t width = b.Size() + 1;
        std::vector<std::uint16_t> longest((a.Size() + 1) * width);
        const auto at = [&](std::size_t i, std::size_t j) -> std::uint16_t& {
            return longest[i * width + j];
        };
        for (std::size_t i = a.Size(); i-- > 0;)
            for (std::size_t j = b.Size(); j-- > 0;)
                at(i, j) = _a[a.begin + i] == _b[b.begin + j]
                               ? static_cast<std::uint16_t>(at(i + 1, j + 1) + 1)
                               : std::max(at(i + 1, j), at(i, j + 1));
        for (std::size_t i = 0, j = 0; i < a.Size() && j < b.Size();)
            if (_a[a.begin + i] == _b[b.begin + j])
                pairs.emplace_back(a.begin + i++, b.begin + j++);
            else if (at(i + 1, j) >= at(i, j + 1))
                ++i;
            else
                ++j;
    }

    void AlignByAnchors(Range a, Range b) {
        const Pairs anchors = RisingOnly(CommonOnce(a, b));
        if (anchors.empty())
            return;
        for (const auto& [i, j] : anchors) {
            Align({a.begin, i}, {b.begin, j});
            pairs.emplace_back(i, j);
            a.begin = i + 1;
            b.begin = j + 1;
        }
        Align(a, b);
    }

    /// Elements that each range has exactly once, in the order of the first.
    Pairs CommonOnce(Range a, Range b) const {
        struct Seen {
            int inA = 0, inB = 0;
            std::size_t at = 0;
        };
        std::unordered_map<std::string_view, Seen> seen;
        for (std::size_t i = a.begin; i < a.end; ++i)
            ++seen[_a[i]].inA;
        for (std::size_t j = b.begin; j < b.end; ++j) {
            Seen& its = seen[_b[j]];
            ++its.inB;
            its.at = j;
        }
        Pairs common;
        for (std::size_t i = a.begin; i < a.end; ++i)
            if (const Seen& its = seen[_a[i]]; its.inA == 1 && its.inB == 1)
                common.emplace_back(i, its.at);
        return common;
    }

    /// The longest part of the pairs in which the second index rises too.
    static Pairs RisingOnly(const Pairs& pairs) {
        std::vector<std::size_t> ends; // of the best pairings of each length
        std::vector<std::size_t> before(pairs.size());
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            const auto place = std::lower_bound(
                ends.begin(), ends.end(), pairs[i].second,
                [&](std::size_t end, std::size_t second) { return pairs[end].second < second; });
            before[i] = place == ends.begin() ? i : *(place - 1);
            if (place == ends.end())
                ends.push_back(i);
            else
                *place = i;
        }
        Pairs rising;
        for (std::size_t count = ends.size(), at = count ? ends.back() : 0; count > 0;
             --count, at = before[at])
            rising.push_back(pairs[at]);
        std::reverse(rising.begin(), rising.end());
        return rising;
    }

    const Texts& _a;
    const Texts& _b;
};

} // namespace

Pairs Align(const Texts& a, const Texts& b) {
    Aligner aligner(a, b);
    aligner.Align({0, a.size()}, {0, b.size()});
    return std::move(aligner.pairs);
}

} // namespace Zuvan::Lumeq::Tool
