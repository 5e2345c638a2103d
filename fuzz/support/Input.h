// Interprets libFuzzer's bytes so that an input can be written with an editor: a choice is a letter, a number
// is digits, and a text is a line.
#pragma once

#include <Lumeq/LumeqRecords.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace Zuvan::Lumeq::Fuzzing {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : _bytes(data, size) {}

    bool IsAtEnd() const { return _bytes.empty(); }

    /// Returns less than `count`: 'a' is 0, 'b' is 1. Takes one byte; 0 at the end.
    std::size_t Choice(std::size_t count);

    /// The digits of a line, with or without a sign; 0 for anything else.
    std::int64_t Number();

    /// The bytes up to the end of the line, or all.
    std::string Bytes();
    /// The same as code units: a byte below 0xF0 is one, any other announces one in the next two bytes.
    std::wstring Line();
    /// None for a line that begins with "~".
    std::optional<std::wstring> OptionalLine();
    /// Up to three pairs of lines, after a choice of how many.
    Extra::Eventing::StringDictionary Fields();

    std::span<const std::uint8_t> Rest();

private:
    std::uint8_t Byte();

    std::span<const std::uint8_t> _bytes;
};

} // namespace Zuvan::Lumeq::Fuzzing
