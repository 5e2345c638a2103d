#include "fuzz/support/Input.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace Zuvan::Lumeq::Fuzzing {

std::uint8_t Input::Byte() {
    if (_bytes.empty())
        return 0;
    const std::uint8_t byte = _bytes.front();
    _bytes = _bytes.subspan(1);
    return byte;
}

std::size_t Input::Choice(std::size_t count) {
    return IsAtEnd() ? 0 : static_cast<std::uint8_t>(Byte() - 'a') % count;
}

std::int64_t Input::Number() {
    const std::string digits = Bytes();
    std::int64_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

std::string Input::Bytes() {
    const auto end = std::find(_bytes.begin(), _bytes.end(), '\n');
    std::string bytes(_bytes.begin(), end);
    _bytes = _bytes.subspan(std::min(bytes.size() + 1, _bytes.size()));
    return bytes;
}

std::wstring Input::Line() {
    std::wstring text;
    while (!IsAtEnd()) {
        const std::uint8_t byte = Byte();
        if (byte == '\n')
            break;
        if (byte < 0xF0) {
            text += static_cast<wchar_t>(byte);
            continue;
        }
        const std::uint8_t high = Byte();
        text += static_cast<wchar_t>(high << 8 | Byte());
    }
    return text;
}

std::optional<std::wstring> Input::OptionalLine() {
    const bool isNone = !IsAtEnd() && _bytes.front() == '~';
    std::wstring text = Line();
    return isNone ? std::nullopt : std::optional(std::move(text));
}

Extra::Eventing::StringDictionary Input::Fields() {
    Extra::Eventing::StringDictionary fields;
    for (std::size_t left = Choice(4); left > 0; --left) {
        const std::wstring key = Line();
        fields[key] = Line();
    }
    return fields;
}

std::span<const std::uint8_t> Input::Rest() { return std::exchange(_bytes, {}); }

} // namespace Zuvan::Lumeq::Fuzzing
