#include "lumeq/view/Messages.h"

#include "lumeq/view/Page.h"

#include <string_view>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr std::string_view Mark = "=?media_type:application/json.b64?=";
constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

void ReadFields(const std::string& text, ViewedMessage& message) {
    const Json json = Json::parse(text, nullptr, false);
    if (!json.is_object()) {
        message.fields.emplace_back("(no JSON)", text);
        return;
    }
    for (const auto& [name, value] : json.items())
        message.fields.emplace_back(name, value.is_string()
                                              ? value.get<std::string>()
                                              : value.dump(-1, ' ', false, Json::error_handler_t::replace));
}

/// "->/projects/... {...}", the line before the post.
bool ShowsMessage(const LogLine& line) {
    return line.severity == "DATA" && line.message.starts_with("->") &&
           line.message.find(" {") != std::string::npos;
}

bool ShowsPost(const LogLine& line) {
    return line.severity == "DATA" && line.message.find("->HTTP POST: ") != std::string::npos;
}

bool ShowsAnswer(const LogLine& line) {
    return line.severity == "DATA" && line.message.substr(0, 3).find("<-") != std::string::npos;
}

} // namespace

std::string DecodeBase64(const std::string& base64) {
    std::string text;
    unsigned bits = 0;
    int count = 0;
    for (const char character : base64) {
        const std::size_t value = Alphabet.find(character);
        if (value == Alphabet.npos)
            break;
        bits = bits << 6 | static_cast<unsigned>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            text += static_cast<char>(bits >> count & 0xFF);
        }
    }
    return text;
}

EncodedPart FindEncodedPart(const std::string& request) {
    const std::size_t mark = request.find(Mark);
    if (mark == request.npos)
        return {};
    const std::size_t begin = mark + Mark.size();
    const std::size_t end = std::min(request.find('"', begin), request.size());
    return {begin, end - begin};
}

ViewedMessage ReadRequest(const std::string& request) {
    ViewedMessage message;
    message.wire = request;
    const std::size_t begin = request.find(' ') + 1;
    message.path = request.substr(begin, request.find(' ', begin) - begin);
    if (const EncodedPart part = FindEncodedPart(request); part.begin != request.npos)
        ReadFields(DecodeBase64(request.substr(part.begin, part.size)), message);
    return message;
}

std::vector<ViewedMessage> MessagesOfLog(const std::vector<LogLine>& lines) {
    std::vector<ViewedMessage> messages;
    for (const LogLine& line : lines)
        if (ShowsMessage(line)) {
            messages.emplace_back();
            const std::size_t space = line.message.find(" {");
            messages.back().path = line.message.substr(2, space - 2);
            ReadFields(line.message.substr(space + 1), messages.back());
        } else if (!messages.empty() && (ShowsPost(line) || ShowsAnswer(line)))
            messages.back().answer.push_back(line.message);
    return messages;
}

} // namespace Zuvan::Lumeq::Tool
