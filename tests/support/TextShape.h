// The part of a text that does not change from run to run.
#pragma once

#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Testing {

/// The text with '#' instead of each digit.
inline std::wstring ShapeOf(std::wstring text, std::wstring_view digits) {
    for (wchar_t& unit : text)
        if (digits.find(unit) != digits.npos)
            unit = L'#';
    return text;
}

} // namespace Zuvan::Lumeq::Testing
