#include "lumeq/CallCheck.h"

#include "Common/Utf.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "lumeq/LibraryTables.h"
#include "lumeq/SessionArguments.h"

#include <algorithm>
#include <stdexcept>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr char Export[] = "export";
constexpr char EventClass[] = "event class";
constexpr std::size_t LongestQuote = 60;

/// A text for a message: the text below it, if there is one, shows all that matters of a long one.
std::string Brief(const std::wstring& text) {
    return text.size() <= LongestQuote ? Quoted(std::wstring_view(text))
                                       : Quoted(std::wstring_view(text).substr(0, LongestQuote)) + "...";
}

Finding RefusedBy(const char* layer, const std::string& argument, const std::string& message) {
    return {Severity::Error, "refused", argument, message + " is refused by the " + layer, layer};
}

Finding RefusedTextBy(const char* layer, const std::string& argument, const std::string& pattern,
                      const std::wstring& text) {
    Finding finding = RefusedBy(layer, argument, argument + " " + Brief(text));
    finding.text = {pattern, text};
    return finding;
}

/// The argument of a character, or the one before a character of the template.
std::string ArgumentAt(const ComposedText& composed, std::size_t at) {
    for (std::size_t i = std::min(at + 1, composed.arguments.size()); i > 0; --i)
        if (!composed.arguments[i - 1].empty())
            return composed.arguments[i - 1];
    return {};
}

/// One call's refusals, gathered.
class RefusalCheck {
public:
    RefusalCheck(const Catalogue& catalogue, const Json& operation, const Json& call)
        : _catalogue(catalogue), _operation(operation), _call(call) {}

    Findings All() {
        for (const Json& argument : _operation.at("arguments"))
            CheckByExport(argument);
        const bool reachesEventClass = _findings.empty();
        if (_operation.contains("record"))
            CheckEnumerations();
        if (reachesEventClass)
            CheckByEventClass();
        return std::move(_findings);
    }

private:
    void CheckByExport(const Json& argument) {
        const std::string type = TextOf(argument, "type");
        const std::string name = TextOf(argument, "name");
        if (type == "text")
            CheckText(argument, name);
        else if (type == "number" && argument.contains("least") && !argument.contains("replacement")) {
            if (const auto number = NumberArgument(argument, _call); number < ValueOf(argument, "least", 0))
                _findings.push_back(RefusedBy(Export, name, name + " " + std::to_string(number)));
        } else if (type == "narrow text") {
            if (IsEmptyNarrowText(argument))
                _findings.push_back(RefusedBy(Export, name, "an empty " + name));
        }
    }

    bool IsEmptyNarrowText(const Json& argument) const {
        const std::string text = SampleHost::ReadNarrowText(_call.at(TextOf(argument, "name")));
        return text.empty() || (argument.at("cppType") == "const char*" && text.front() == '\0');
    }

    void CheckText(const Json& argument, const std::string& name) {
        const auto text = TextArgument(argument, _call);
        if (!text) {
            if (ValueOf(argument, "required", false))
                _findings.push_back(RefusedBy(Export, name, name + " null"));
            return;
        }
        const std::string pattern = TextOf(argument, "pattern");
        const std::wstring checked = name == "url" ? WithoutQuery(*text) : *text;
        if (!LibraryPattern(pattern).Matches(checked))
            _findings.push_back(RefusedTextBy(Export, name, pattern, checked));
    }

    /// The values of a task are converted from the last to the first, all others from the first on.
    void CheckEnumerations() {
        const Json& arguments = _operation.at("arguments");
        const auto first = static_cast<std::ptrdiff_t>(_findings.size());
        for (const Json& argument : arguments)
            if (argument.contains("enumeration"))
                CheckEnumeration(argument);
        if (_operation.contains("task"))
            std::reverse(_findings.begin() + first, _findings.end());
    }

    void CheckEnumeration(const Json& argument) {
        const std::string enumeration = TextOf(argument, "enumeration");
        const std::string name = TextOf(argument, "name");
        const auto number = NumberArgument(argument, _call);
        if (EnumerationOfLibrary(enumeration).hasValue(number))
            return;
        const auto last = _catalogue.Enumerations().at(enumeration).at("values").size() - 1;
        _findings.push_back(RefusedBy(EventClass, name,
                                      name + " " + std::to_string(number) + ", no value of " + enumeration +
                                          " (0 to " + std::to_string(last) + "),"));
    }

    void CheckByEventClass() {
        if (const auto check = _operation.find("eventClassCheck"); check != _operation.end())
            CheckComposedText(*check);
        // The class of a task's details is made before the task ends.
        std::vector<const Json*> arguments;
        for (const Json& argument : _operation.at("arguments"))
            arguments.insert(arguments.begin(), &argument);
        for (const Json* argument : arguments)
            CheckStricterPattern(*argument);
        for (const Json& argument : _operation.at("arguments"))
            if (TextOf(argument, "type") == "devices")
                CheckDevices(argument);
    }

    void CheckComposedText(const Json& check) {
        const ComposedText composed = Compose(TextOf(check, "value"), _operation, _call);
        const std::string pattern = TextOf(check, "pattern");
        const Explanation explanation = Explain(LibraryPattern(pattern), composed.text);
        if (explanation.isAccepted)
            return;
        const std::string argument = ArgumentAt(composed, explanation.at);
        Finding finding =
            RefusedBy(EventClass, argument, Brief(composed.text) + ", composed of its arguments,");
        if (!argument.empty())
            finding.message += " for its " + argument;
        finding.text = {pattern, composed.text};
        _findings.push_back(finding);
    }

    void CheckStricterPattern(const Json& argument) {
        const std::string pattern = TextOf(argument, "pattern");
        const std::string stricter =
            pattern.empty() ? pattern : TextOf(_catalogue.Patterns().at(pattern), "stricter");
        if (stricter.empty())
            return;
        const std::string name = TextOf(argument, "name");
        std::wstring text = TextArgument(argument, _call).value_or(L"");
        if (name == "url") {
            text = WithoutQuery(text);
            if (!HasUtf8(text)) {
                _findings.push_back(RefusedBy(EventClass, name, name + " with half a surrogate pair"));
                return;
            }
        }
        if (!LibraryPattern(stricter).Matches(text))
            _findings.push_back(RefusedTextBy(EventClass, name, stricter, text));
    }

    static bool HasUtf8(const std::wstring& text) {
        try {
            static_cast<void>(Common::ToUtf8(text));
            return true;
        } catch (const std::range_error&) {
            return false;
        }
    }

    void CheckDevices(const Json& argument) {
        int number = 0;
        for (const auto& device : DevicesArgument(argument, _call)) {
            ++number;
            if (!device.empty() && device.find(L"dev_biid") == device.end()) {
                _findings.push_back(RefusedBy(EventClass, TextOf(argument, "name"),
                                              "printer " + std::to_string(number) +
                                                  " without dev_biid, which ends the list,"));
                return;
            }
        }
    }

    const Catalogue& _catalogue;
    const Json& _operation;
    const Json& _call;
    Findings _findings;
};

void AddUnknowns(const Json& argument, const Json& call, Findings& findings) {
    const std::string name = TextOf(argument, "name");
    const auto add = [&](const std::string& what) {
        findings.push_back(
            {Severity::Note, "recorded-as-unknown", name, what + " is recorded as \"unknown\"", {}});
    };
    if (argument.contains("enumeration")) {
        const auto number = NumberArgument(argument, call);
        if (EnumerationOfLibrary(TextOf(argument, "enumeration")).textOf(number) == L"unknown")
            add(name + " " + std::to_string(number));
    } else if (TextOf(argument, "pattern").starts_with("ad")) {
        const std::wstring text = TextArgument(argument, call).value_or(L"");
        if (text.empty() || Extra::Eventing::IsWhiteSpace(text.c_str()))
            add(name + " " + Brief(text));
    }
}

void AddReplacedFields(const Json& operation, const Json& argument, const Json& call, Findings& findings) {
    const std::string name = TextOf(argument, "name");
    const auto replaced = name == "details" ? std::vector<const char*>{"schema", "moniker"}
                          : operation.contains("task") && name == "localContext"
                              ? std::vector<const char*>{"_app_event_task_guid"}
                              : std::vector<const char*>{};
    const auto fields = FieldsArgument(argument, call);
    for (const char* field : replaced)
        if (fields.contains(SampleHost::ReadText(Json(field))))
            findings.push_back(
                {Severity::Warning,
                 "field-replaced",
                 name,
                 std::string("the field \"") + field + "\" of " + name + " is replaced by the library's",
                 {}});
}

void AddSkippedDevices(const Json& argument, const Json& call, Findings& findings) {
    int number = 0;
    for (const auto& device : DevicesArgument(argument, call)) {
        const std::string printer = "printer " + std::to_string(++number);
        const auto biid = device.find(L"dev_biid");
        if (!device.empty() && biid == device.end())
            return;
        Finding finding{Severity::Warning,
                        "printer-skipped",
                        TextOf(argument, "name"),
                        printer + " has no fields and is skipped",
                        {}};
        if (!device.empty()) {
            if (LibraryPattern("biid").Matches(biid->second))
                continue;
            finding.message = printer + " is skipped for its dev_biid " + Brief(biid->second);
            finding.text = {"biid", biid->second};
        }
        findings.push_back(finding);
    }
}

} // namespace

Findings RefusalsOf(const Catalogue& catalogue, const Json& operation, const Json& call) {
    return RefusalCheck(catalogue, operation, call).All();
}

Findings LossesOf(const Json& operation, const Json& call) {
    Findings findings;
    for (const Json& argument : operation.at("arguments")) {
        const std::string type = TextOf(argument, "type");
        const std::string name = TextOf(argument, "name");
        if (argument.contains("replacement") &&
            NumberArgument(argument, call) < ValueOf(argument, "least", 0))
            findings.push_back({Severity::Warning,
                                "number-replaced",
                                name,
                                name + " " + std::to_string(NumberArgument(argument, call)) +
                                    " is replaced by " + argument.at("replacement").dump(),
                                {}});
        if (operation.contains("record"))
            AddUnknowns(argument, call, findings);
        if (type == "fields")
            AddReplacedFields(operation, argument, call, findings);
        if (type == "devices")
            AddSkippedDevices(argument, call, findings);
    }
    return findings;
}

} // namespace Zuvan::Lumeq::Tool
