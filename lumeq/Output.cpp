#include "lumeq/Output.h"

#include "samples/host/Json.h"

#include <windows.h>

#include <cstdlib>
#include <io.h>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr DWORD VirtualTerminalProcessing = 4;

/// Windows before 10 has consoles without escape sequences.
bool TurnsEscapesOn(std::FILE* stream) {
    const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | VirtualTerminalProcessing);
}

const char* CodeOf(Colour colour) {
    switch (colour) {
    case Colour::Bold:
        return "\x1b[1m";
    case Colour::Red:
        return "\x1b[31m";
    case Colour::Yellow:
        return "\x1b[33m";
    case Colour::Blue:
        return "\x1b[36m";
    case Colour::Green:
        return "\x1b[32m";
    default:
        return "";
    }
}

bool IsHighSurrogate(wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

bool IsPair(std::wstring_view text, std::size_t at) {
    return IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
}

bool IsInvisible(wchar_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit <= 0xA0) || unit == 0xAD ||
           (unit >= 0x2000 && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202F) ||
           (unit >= 0x2066 && unit <= 0x2069) || unit == 0x3000 || unit == 0xFEFF || IsHighSurrogate(unit) ||
           IsLowSurrogate(unit);
}

std::string Escaped(wchar_t unit) {
    switch (unit) {
    case L'\n':
        return "\\n";
    case L'\r':
        return "\\r";
    case L'\t':
        return "\\t";
    default:
        char code[8];
        std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(unit));
        return code;
    }
}

/// Calls `show` with what each character looks like, and whether that is plain ASCII.
template <class Show>
void ForEachCharacter(std::wstring_view text, Show show) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isPair = IsPair(text, at);
        if (isPair || !IsInvisible(text[at]))
            show(SampleHost::ToUtf8(text.substr(at, isPair ? 2 : 1)), std::size_t{1});
        else
            show(Escaped(text[at]), Escaped(text[at]).size());
        at += isPair;
    }
}

} // namespace

Output::Output(std::FILE* stream) : _stream(stream), _hasColour(false) {
    if (_isatty(_fileno(stream))) {
        SetConsoleOutputCP(CP_UTF8);
        _hasColour = std::getenv("NO_COLOR") == nullptr && TurnsEscapesOn(stream);
    }
}

std::string Output::Paint(Colour colour, std::string_view text) const {
    if (!_hasColour || colour == Colour::Plain)
        return std::string(text);
    return CodeOf(colour) + std::string(text) + "\x1b[0m";
}

void Output::Line(std::string_view text) const {
    std::fwrite(text.data(), 1, text.size(), _stream);
    std::fputc('\n', _stream);
}

std::string Shown(std::wstring_view text) {
    std::string shown;
    ForEachCharacter(text, [&](const std::string& character, std::size_t) { shown += character; });
    return shown;
}

std::size_t ColumnsOf(std::wstring_view text) {
    std::size_t columns = 0;
    ForEachCharacter(text, [&](const std::string&, std::size_t its) { columns += its; });
    return columns;
}

std::string Quoted(std::wstring_view text) { return '"' + Shown(text) + '"'; }

std::string Quoted(const std::string& utf8) { return Quoted(SampleHost::ReadText(SampleHost::Json(utf8))); }

} // namespace Zuvan::Lumeq::Tool
