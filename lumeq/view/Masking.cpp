#include "lumeq/view/Masking.h"

#include "Common/Text.h"
#include "lumeq/view/HiddenParts.h"
#include "lumeq/view/Messages.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

/// Shorter ones would be found in words.
constexpr std::size_t ShortestSecret = 4;

void ReplaceAll(std::string& text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

template <class Visit>
void VisitStrings(const Json& json, const std::string& name, Visit visit) {
    if (json.is_string())
        visit(name, json.get_ref<const std::string&>());
    else if (json.is_structured())
        for (const auto& [key, value] : json.items())
            VisitStrings(value, json.is_object() ? key : name, visit);
}

bool IsUnknown(const std::string& value) { return value == "unknown" || value == "UNKNOWN"; }

std::string BetweenTags(const std::string& xml, const std::string& name) {
    const std::size_t tag = xml.find("<" + name);
    const std::size_t begin = tag == xml.npos ? tag : xml.find('>', tag);
    const std::size_t end = begin == xml.npos ? begin : xml.find('<', begin);
    return end == xml.npos ? "" : xml.substr(begin + 1, end - begin - 1);
}

/// Where a token follows `mark`: in the headers as they are sent a line ends in CR and LF, for which the log
/// shows two spaces; the last argument of a call ends the line with a bracket.
std::string TokenAfter(const std::string& text, std::string_view mark) {
    const std::size_t found = text.find(mark);
    if (found == text.npos)
        return {};
    const std::size_t begin = found + mark.size();
    return text.substr(begin, std::min(text.find('\r', begin), text.find("  User-Agent:", begin)) - begin);
}

std::string LastArgument(const std::string& text, std::string_view call) {
    const std::size_t comma = text.find(call) == text.npos ? text.npos : text.rfind(", ");
    return comma == text.npos || !text.ends_with(')') ? "" : text.substr(comma + 2, text.size() - comma - 3);
}

} // namespace

Masking::Masking(const Catalogue& catalogue) : _fields{"deviceUuid", "biid"} {
    const auto add = [this](const Json& fields) {
        for (const Json& field : fields)
            if (const std::string privacy = TextOf(field, "privacy");
                privacy == "device" || privacy == "serial")
                _fields.insert(TextOf(field, "field"));
    };
    add(catalogue.Whole().at("message").at("fields"));
    for (const Json& operation : catalogue.Operations())
        if (operation.contains("record"))
            add(operation.at("record").at("details"));
}

void Masking::Hide(std::vector<Run>& runs) {
    for (const Run& run : runs)
        Learn(run);
    for (Run& run : runs)
        HideRun(run);
}

void Masking::Learn(const Run& run) {
    const auto learnLines = [this](const std::vector<LogLine>& lines) {
        for (const LogLine& line : lines)
            LearnToken(line.message);
    };
    learnLines(run.otherLines);
    for (const ViewedCall& call : run.calls) {
        learnLines(call.log);
        for (const Json& operation : call.handedOver)
            LearnFrom(operation);
    }
    for (const Json& operation : run.otherHandedOver)
        LearnFrom(operation);
    for (const ViewedMessage& message : run.messages) {
        LearnToken(message.wire);
        for (const auto& [name, value] : message.fields)
            if (name == "app_session_uuid")
                _spared.insert(value);
            else if (_fields.count(name) != 0 && !IsUnknown(value))
                LearnSecret(value);
    }
    LearnToken(run.settings);
}

void Masking::LearnFrom(const Json& json) {
    VisitStrings(json, "", [this](const std::string& name, const std::string& value) {
        if (name == "_app_event_task_guid")
            _spared.insert(value);
    });
}

void Masking::LearnToken(const std::string& text) {
    LearnSecret(TokenAfter(text, "Authorization: Bearer "));
    // Settings and the log of their reading have it in ROT13.
    for (const std::string& token :
         {TokenAfter(text, "authToken="), LastArgument(text, "PostMessageAndForget("),
          BetweenTags(text, "AuthenticationToken")}) {
        if (token.empty())
            continue;
        LearnSecret(token);
        LearnSecret(SampleHost::ToUtf8(Common::Rot13Wide(SampleHost::ReadText(Json(token)))));
    }
}

void Masking::LearnSecret(const std::string& value) {
    if (value.size() >= ShortestSecret &&
        std::find(_secrets.begin(), _secrets.end(), value) == _secrets.end())
        _secrets.push_back(value);
}

void Masking::HideRun(Run& run) {
    for (ViewedCall& call : run.calls)
        HideCall(call);
    for (ViewedTask& task : run.tasks)
        HideText(task.result);
    for (ViewedMessage& message : run.messages)
        HideMessage(message);
    HideLines(run.otherLines);
    for (Json& operation : run.otherHandedOver)
        HideJson(operation);
    for (std::string& remark : run.remarks)
        HideText(remark);
    HideText(run.settings);
    HideText(run.name);
}

void Masking::HideCall(ViewedCall& call) {
    // A device's UUID may be any text, so it is hidden by its place in this call.
    std::vector<std::string> own;
    for (ViewedArgument& argument : call.arguments) {
        if (_fields.count(argument.name) != 0 && argument.value.size() > 2 + ShortestSecret)
            own.push_back(argument.value.substr(1, argument.value.size() - 2));
        HideText(argument.value);
    }
    const auto hide = [&](std::string& text) {
        HideText(text);
        for (const std::string& value : own)
            ReplaceAll(text, value, StandIn(value));
    };
    for (ViewedArgument& argument : call.arguments)
        hide(argument.value);
    for (Reason& reason : call.reasons)
        for (std::string* text : {&reason.message, &reason.text, &reason.nearest})
            hide(*text);
    for (std::string& remark : call.remarks)
        hide(remark);
    for (Json& operation : call.handedOver)
        HideJson(operation);
    HideJson(call.answer);
    hide(call.outcome);
    for (LogLine& line : call.log)
        for (std::string* text : {&line.message, &line.text})
            hide(*text);
}

void Masking::HideMessage(ViewedMessage& message) {
    for (auto& [name, value] : message.fields)
        if (_fields.count(name) != 0 && !IsUnknown(value))
            value = StandIn(value);
        else
            HideText(value);
    for (std::string& line : message.answer)
        HideText(line);
    HideText(message.path);
    HideWire(message.wire);
}

void Masking::HideWire(std::string& wire) {
    const EncodedPart part = FindEncodedPart(wire);
    if (part.begin != wire.npos) {
        const std::string message = Hidden(DecodeBase64(wire.substr(part.begin, part.size)));
        const std::wstring encoded =
            Common::Base64Encode({reinterpret_cast<const std::uint8_t*>(message.data()), message.size()});
        wire = Hidden(wire.substr(0, part.begin)) + SampleHost::ToUtf8(encoded) +
               wire.substr(part.begin + part.size);
    } else
        HideText(wire);
}

void Masking::HideJson(Json& json) {
    if (json.is_string())
        HideText(json.get_ref<std::string&>());
    else if (json.is_array()) {
        for (Json& item : json)
            HideJson(item);
    } else if (json.is_object()) {
        for (auto& [name, value] : json.items())
            if (value.is_string() && _fields.count(name) != 0 && !IsUnknown(value.get<std::string>()))
                value = StandIn(value.get<std::string>());
            else
                HideJson(value);
    }
}

void Masking::HideText(std::string& text) { text = Hidden(text); }

void Masking::HideLines(std::vector<LogLine>& lines) {
    for (LogLine& line : lines)
        for (std::string* text : {&line.message, &line.text})
            HideText(*text);
}

std::string Masking::Hidden(const std::string& text) {
    std::string hidden = text;
    for (const HiddenPart& part : PartsToHide(text)) {
        const std::string value = text.substr(part.begin, part.size);
        if (_spared.count(value) == 0)
            hidden.replace(part.begin, part.size, StandIn(value));
    }
    for (const std::string& secret : _secrets)
        ReplaceAll(hidden, secret, StandIn(secret));
    return hidden;
}

/// As many bytes as the value has, so that the places of all other parts stay.
std::string Masking::StandIn(const std::string& value) {
    // Hidden already.
    if (value.find_first_not_of("x-:0123456789") == value.npos && value.find("xx") != value.npos)
        return value;
    const std::size_t number = _numbers.try_emplace(value, _numbers.size() + 1).first->second;
    std::string standIn = value;
    for (char& byte : standIn)
        if (byte != '-' && byte != ':')
            byte = 'x';
    const std::string digits = std::to_string(number);
    if (digits.size() < standIn.size())
        standIn.replace(standIn.size() - digits.size(), digits.size(), digits);
    return standIn;
}

} // namespace Zuvan::Lumeq::Tool
