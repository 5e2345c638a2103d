#include "Common/CompiledPattern.h"
#include "lumeq/CallCheck.h"
#include "lumeq/SessionArguments.h"

#include <algorithm>
#include <cwctype>
#include <string_view>

namespace Zuvan::Lumeq::Tool {

namespace {

struct Look {
    const Common::Pattern& pattern;
    const char* words;
};

using Common::CompiledPattern;
constexpr auto Ignored = Common::LetterCase::Ignored;

/// Of a word: what stands between characters that none of these can have.
const Look WordLooks[] = {
    {CompiledPattern<LR"([\w.+-]+@[\w-]+(\.[\w-]+)+)">, "an e-mail address"},
    {CompiledPattern<LR"(\d{1,3}(\.\d{1,3}){3})">, "an IP address"},
    {CompiledPattern<LR"([0-9a-f]{2}([:-][0-9a-f]{2}){5})", Ignored>, "a hardware address"},
};

const Look TextLooks[] = {
    {CompiledPattern<LR"((.|\s)*[\\/](users|home|documents and settings)[\\/][^\\/](.|\s)*)", Ignored>,
     "a path with a user's name"},
};

/// Of fields that a host names itself.
const Common::Pattern& PersonalName = CompiledPattern<
    LR"(.*(e-?mail|user_?name|first_?name|last_?name|full_?name|phone|password|serial|login).*)", Ignored>;

const Common::Pattern& UserInUrl = CompiledPattern<LR"([^:/]*://[^/?#]*@(.|\s)*)">;
const Common::Pattern& PasswordInUrl = CompiledPattern<LR"([^:/]*://[^/?#@]*:[^/?#]*@(.|\s)*)">;
const Common::Pattern& FragmentInUrl = CompiledPattern<LR"([^#]*#(.|\s)*)">;

Finding Warning(const char* rule, const std::string& argument, const std::string& message) {
    return {Severity::Warning, rule, argument, message, {}};
}

bool IsPartOfWord(wchar_t unit) {
    return std::iswalnum(unit) != 0 || std::wstring_view(L"_.+-@:").find(unit) != std::wstring_view::npos;
}

std::vector<std::wstring> WordsOf(const std::wstring& text) {
    std::vector<std::wstring> words(1);
    for (const wchar_t unit : text)
        if (IsPartOfWord(unit))
            words.back() += unit;
        else if (!words.back().empty())
            words.emplace_back();
    for (std::wstring& word : words)
        word.erase(word.find_last_not_of(L".:") + 1); // the end of a sentence
    return words;
}

/// Null if the text looks harmless.
const char* PersonalLookOf(const std::wstring& text) {
    for (const Look& look : TextLooks)
        if (look.pattern.Matches(text))
            return look.words;
    for (const std::wstring& word : WordsOf(text))
        for (const Look& look : WordLooks)
            if (look.pattern.Matches(word))
                return look.words;
    return nullptr;
}

bool AddLooks(const std::string& argument, const std::string& what, const std::wstring& text,
              Findings& findings) {
    const char* const look = PersonalLookOf(text);
    if (look != nullptr)
        findings.push_back(Warning("personal", argument, what + " looks like " + look));
    return look != nullptr;
}

void AddFields(const std::string& argument, const API::StringDictionary& fields, Findings& findings) {
    std::vector<std::pair<std::wstring, std::wstring>> sorted(fields.begin(), fields.end());
    std::sort(sorted.begin(), sorted.end());
    for (const auto& [name, value] : sorted) {
        const std::string what = "the field " + Quoted(std::wstring_view(name)) + " of " + argument;
        if (!AddLooks(argument, what, value, findings) && !value.empty() && PersonalName.Matches(name))
            findings.push_back(Warning("personal", argument, what + " has a personal name"));
    }
}

void AddUrl(const std::string& argument, const std::wstring& url, Findings& findings) {
    if (PasswordInUrl.Matches(url))
        findings.push_back(
            Warning("url-credentials", argument, "the user name and password of the URL are recorded"));
    else if (UserInUrl.Matches(url))
        findings.push_back(Warning("url-credentials", argument, "the user name of the URL is recorded"));
    else
        AddLooks(argument, argument, url, findings);
    if (FragmentInUrl.Matches(url))
        findings.push_back(
            Warning("url-fragment", argument, "the part of the URL from \"#\" on is recorded"));
}

} // namespace

Findings PersonalValuesOf(const Json& operation, const Json& call) {
    Findings findings;
    for (const Json& argument : operation.at("arguments")) {
        const std::string type = TextOf(argument, "type");
        const std::string name = TextOf(argument, "name");
        if (name == "url")
            AddUrl(name, WithoutQuery(TextArgument(argument, call).value_or(L"")), findings);
        else if (type == "text" &&
                 !TextOf(argument, "pattern").ends_with("Version")) // "1.2.3.4" is no address
            AddLooks(name, name, TextArgument(argument, call).value_or(L""), findings);
        else if (type == "fields")
            AddFields(name, FieldsArgument(argument, call), findings);
        else if (type == "devices")
            for (const auto& device : DevicesArgument(argument, call))
                AddFields(name, device, findings);
    }
    return findings;
}

} // namespace Zuvan::Lumeq::Tool
