// Base64, the rotation of letters, and the small predicates on texts.
#include "Common/Text.h"
#include "Common/Utf.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/PlainBase64.h"
#include "fuzz/support/PlainUtf.h"
#include "fuzz/support/Require.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

void CheckBase64(std::span<const std::uint8_t> bytes) {
    const auto decoded = PlainBase64Decoded(Common::Base64Encode(bytes));
    Require(decoded && std::equal(decoded->begin(), decoded->end(), bytes.begin(), bytes.end()),
            "Base64 decodes to its bytes");
}

void CheckBase64OfUtf8(const std::wstring& text) {
    const std::optional<std::string> utf8 = PlainUtf8(text);
    std::wstring encoded;
    const bool refused =
        Thrown<std::range_error>([&] { encoded = Common::Base64EncodeUtf8(text); }).has_value();
    Require(refused == !utf8, "an unpaired surrogate alone is refused");
    if (refused)
        return;
    const auto decoded = PlainBase64Decoded(encoded);
    Require(decoded && std::string(decoded->begin(), decoded->end()) == *utf8,
            "Base64 decodes to the text's UTF-8");
}

wchar_t Rotated(wchar_t unit) {
    constexpr std::wstring_view From = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr std::wstring_view To = L"NOPQRSTUVWXYZABCDEFGHIJKLMnopqrstuvwxyzabcdefghijklm";
    const std::size_t at = From.find(unit);
    return at == From.npos ? unit : To[at];
}

void CheckRotation(const std::wstring& text) {
    std::wstring rotated;
    const bool refused = Thrown<std::range_error>([&] { rotated = Common::Rot13Wide(text); }).has_value();
    Require(refused == !PlainUtf8(text), "an unpaired surrogate alone is refused");
    if (refused)
        return;
    std::wstring expected = text;
    std::transform(expected.begin(), expected.end(), expected.begin(), Rotated);
    Require(rotated == expected, "letters of ASCII turn by 13, nothing else turns");
    Require(Common::Rot13Wide(rotated) == text, "rotated twice it is the text");
}

void CheckQuestions(const std::wstring& text) {
    Require(Common::IsBlank(text) == (text.find_first_not_of(L" \t\n\v\f\r") == text.npos),
            "a text of only white space counts as blank");
    const std::wstring lower = Common::ToLower(text);
    const std::wstring upper = Common::ToUpper(text);
    Require(lower.size() == text.size() && upper.size() == text.size(), "case keeps the length");
    Require(Common::ToLower(upper) == lower && Common::ToUpper(lower) == upper, "case is one of two");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    if (input.Choice(2) == 0) {
        CheckBase64(input.Rest());
        return 0;
    }
    const std::wstring text = input.Line();
    CheckBase64OfUtf8(text);
    CheckRotation(text);
    CheckQuestions(text);
    return 0;
}
