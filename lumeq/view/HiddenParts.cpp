#include "lumeq/view/HiddenParts.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::size_t ShortestHash = 32;

bool IsHex(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}
bool IsSlash(char byte) { return byte == '/' || byte == '\\'; }
char Lower(char byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte; }

/// In the shape, "h" is a hexadecimal digit.
bool HasShape(std::string_view text, std::string_view shape) {
    return text.size() >= shape.size() &&
           std::equal(shape.begin(), shape.end(), text.begin(), [](char expected, char byte) {
               return expected == 'h' ? IsHex(byte) : expected == byte;
           });
}

std::size_t HexRun(std::string_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsHex) - text.begin());
}

/// A long row of one letter, or a long number, is no hash.
bool IsMixed(std::string_view hex) {
    const auto isDigit = [](char byte) { return byte >= '0' && byte <= '9'; };
    return std::any_of(hex.begin(), hex.end(), isDigit) && !std::all_of(hex.begin(), hex.end(), isDigit);
}

std::size_t SizeOfIdentifier(std::string_view rest) {
    constexpr std::string_view Uuid = "hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh";
    if (HasShape(rest, Uuid))
        return Uuid.size();
    for (const std::string_view address : {"hh:hh:hh:hh:hh:hh", "hh-hh-hh-hh-hh-hh"})
        if (HasShape(rest, address) && HexRun(rest.substr(address.size())) == 0)
            return address.size();
    const std::size_t run = HexRun(rest);
    return run >= ShortestHash && IsMixed(rest.substr(0, run)) ? run : 0;
}

bool BeginsWith(std::string_view text, std::string_view lowerCase) {
    return text.size() >= lowerCase.size() &&
           std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                      [](char expected, char byte) { return expected == Lower(byte); });
}

/// The name after "C:\Users\" and its like, at the slash that begins it. Slashes may be doubled, as JSON
/// does. A screen may be "/home/list", so a path with slashes begins after a colon.
HiddenPart UserInPath(std::string_view text, std::size_t at) {
    if (text[at] == '/' && (at == 0 || text[at - 1] != ':'))
        return {at, 0};
    const auto skipSlashes = [&](std::size_t from) {
        while (from < text.size() && IsSlash(text[from]))
            ++from;
        return from;
    };
    const std::size_t folder = skipSlashes(at);
    for (const std::string_view name : {"users", "home", "documents and settings"}) {
        const std::size_t after = folder + name.size();
        if (!BeginsWith(text.substr(std::min(folder, text.size())), name) || after >= text.size() ||
            !IsSlash(text[after]))
            continue;
        const std::size_t begin = skipSlashes(after);
        const std::size_t end = std::min(text.find_first_of("/\\\"'<>|:*?\r\n,;)]}", begin), text.size());
        return {begin, end - begin};
    }
    return {at, 0};
}

/// What stands between "://" and "@", at the colon.
HiddenPart UserInUrl(std::string_view text, std::size_t at) {
    const std::size_t begin = at + 3;
    const std::size_t end =
        text.substr(at).starts_with("://") ? text.find_first_of("@/?# \"", begin) : text.npos;
    return end == text.npos || text[end] != '@' ? HiddenPart{at, 0} : HiddenPart{begin, end - begin};
}

HiddenPart PartAt(std::string_view text, std::size_t at, bool beginsWord) {
    if (IsSlash(text[at]))
        return UserInPath(text, at);
    if (text[at] == ':')
        return UserInUrl(text, at);
    return {at, beginsWord && IsHex(text[at]) ? SizeOfIdentifier(text.substr(at)) : 0};
}

} // namespace

std::vector<HiddenPart> PartsToHide(std::string_view text) {
    std::vector<HiddenPart> parts;
    for (std::size_t at = 0; at < text.size();) {
        const HiddenPart part = PartAt(text, at, at == 0 || !IsHex(text[at - 1]));
        if (part.size > 0)
            parts.push_back(part);
        at = part.size > 0 ? part.begin + part.size : at + 1;
    }
    return parts;
}

} // namespace Zuvan::Lumeq::Tool
