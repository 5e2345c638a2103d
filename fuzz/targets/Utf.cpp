// Wide text to and from UTF-8, compared with a conversion written from the standard.
#include "Common/Utf.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/PlainUtf.h"
#include "fuzz/support/Require.h"

#include <stdexcept>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

const std::optional<std::string> BadConversion = "bad conversion";

void CheckToUtf8(const std::wstring& text) {
    const std::optional<std::string> expected = PlainUtf8(text);
    std::string utf8;
    const std::optional<std::string> failure = Thrown<std::range_error>([&] { utf8 = Common::ToUtf8(text); });
    if (!expected) {
        Require(failure == BadConversion, "an unpaired surrogate is refused");
    } else {
        Require(!failure && utf8 == *expected, "a whole text becomes UTF-8");
        Require(Common::FromUtf8(utf8) == text, "UTF-8 becomes the text again");
    }
}

/// Replaces each unpaired surrogate by U+FFFD.
std::wstring Repaired(const std::wstring& text) {
    std::wstring repaired;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (PlainUtf8(text.substr(i, 1)))
            repaired += text[i];
        else if (i + 1 < text.size() && PlainUtf8(text.substr(i, 2)))
            repaired += text.substr(i++, 2);
        else
            repaired += L'\xFFFD';
    }
    return repaired;
}

void CheckFromUtf8(const std::string& bytes) {
    const std::optional<std::wstring> expected = PlainUtf16(bytes);
    std::wstring text;
    const std::optional<std::string> failure =
        Thrown<std::range_error>([&] { text = Common::FromUtf8(bytes); });
    if (!expected) {
        Require(failure == BadConversion, "incomplete UTF-8 is refused");
    } else {
        Require(!failure && text == *expected, "UTF-8 becomes the text");
        Require(Common::ToUtf8(text) == bytes, "the text becomes the same UTF-8");
    }
}

void CheckWidenLossy(const std::string& bytes) {
    const std::string text = bytes.c_str();
    std::wstring byByte;
    for (const char byte : text)
        byByte += static_cast<wchar_t>(static_cast<std::uint8_t>(byte));
    Require(Common::WidenLossy(text.c_str()) == PlainUtf16(text).value_or(byByte),
            "a report is UTF-8 or bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    if (input.Choice(2) == 0) {
        const std::wstring text = input.Line();
        CheckToUtf8(text);
        Require(Common::ToUtf8Lossy(text) == PlainUtf8(Repaired(text)),
                "a lossy text has U+FFFD instead of unpaired surrogates");
    } else {
        const std::span<const std::uint8_t> rest = input.Rest();
        const std::string bytes(rest.begin(), rest.end());
        CheckFromUtf8(bytes);
        CheckWidenLossy(bytes);
    }
    return 0;
}
