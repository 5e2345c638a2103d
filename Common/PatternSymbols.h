// The characters that a pattern can distinguish.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Zuvan::Lumeq::Common {

/// A set of small numbers, since std::bitset is not constexpr in C++20. Plain arrays, because each call of a
/// function slows the compiler.
template <std::size_t Size>
struct NumberSet {
    static constexpr std::size_t Words = (Size + 63) / 64;

    std::uint64_t words[Words] = {};

    constexpr bool Has(std::size_t number) const { return (words[number / 64] >> number % 64 & 1) != 0; }
    constexpr void Add(std::size_t number) { words[number / 64] |= std::uint64_t{1} << number % 64; }
    constexpr void Add(const NumberSet& other) {
        for (std::size_t i = 0; i < Words; ++i)
            words[i] |= other.words[i];
    }
    constexpr bool Overlaps(const NumberSet& other) const {
        for (std::size_t i = 0; i < Words; ++i)
            if ((words[i] & other.words[i]) != 0)
                return true;
        return false;
    }
    constexpr bool operator==(const NumberSet&) const = default;
};

/// What patterns ask of a character beyond ASCII. The runtime knows the first three.
enum Trait : unsigned {
    Alnum = 1,
    Digit = 2,
    Space = 4,
    Control = 8,        ///< U+0080 to U+009F.
    LineSeparator = 16, ///< U+2028 and U+2029, which '.' does not match.
};
inline constexpr unsigned AllTraits = 31;

/// A symbol is an ASCII character, or BeyondAscii plus the traits of any other.
inline constexpr std::size_t BeyondAscii = 0x80;
inline constexpr std::size_t SymbolCount = BeyondAscii + AllTraits + 1;

using SymbolSet = NumberSet<SymbolCount>;

constexpr void AddRange(SymbolSet& set, std::size_t first, std::size_t last) {
    for (std::size_t symbol = first; symbol <= last; ++symbol)
        set.Add(symbol);
}

constexpr void AddAllWith(Trait trait, SymbolSet& set) {
    for (unsigned traits = 0; traits <= AllTraits; ++traits)
        if ((traits & trait) != 0)
            set.Add(BeyondAscii + traits);
}

constexpr SymbolSet Complement(const SymbolSet& set) {
    SymbolSet others;
    for (std::size_t symbol = 0; symbol < SymbolCount; ++symbol)
        if (!set.Has(symbol))
            others.Add(symbol);
    return others;
}

constexpr SymbolSet WithBothCases(SymbolSet set) {
    constexpr std::size_t ToLower = 'a' - 'A';
    for (std::size_t upper = 'A'; upper <= 'Z'; ++upper)
        if (set.Has(upper) || set.Has(upper + ToLower)) {
            set.Add(upper);
            set.Add(upper + ToLower);
        }
    return set;
}

/// \w, \d and \s.
constexpr SymbolSet WordSymbols() {
    SymbolSet set;
    AddRange(set, '0', '9');
    AddRange(set, 'A', 'Z');
    AddRange(set, 'a', 'z');
    set.Add('_');
    AddAllWith(Alnum, set);
    return set;
}

constexpr SymbolSet DigitSymbols() {
    SymbolSet set;
    AddRange(set, '0', '9');
    AddAllWith(Digit, set);
    return set;
}

constexpr SymbolSet SpaceSymbols() {
    SymbolSet set;
    AddRange(set, '\t', '\r');
    set.Add(' ');
    AddAllWith(Space, set);
    return set;
}

/// '.': no end of a line, as ECMAScript has them.
constexpr SymbolSet SymbolsOfALine() {
    SymbolSet ends;
    ends.Add('\n');
    ends.Add('\r');
    AddAllWith(LineSeparator, ends);
    return Complement(ends);
}

} // namespace Zuvan::Lumeq::Common
