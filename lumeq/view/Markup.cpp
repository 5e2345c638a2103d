#include "lumeq/view/Markup.h"

#include "Common/Text.h"
#include "LumeqLib/Extra/Collection/Sha256.h"
#include "lumeq/Output.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool {

namespace {

bool IsPlain(std::string_view utf8) {
    return std::all_of(utf8.begin(), utf8.end(), [](char byte) { return byte >= 0x20 && byte < 0x7F; });
}

/// Most texts are plain ASCII, which needs no conversion.
std::string Visible(std::string_view utf8) {
    return IsPlain(utf8) ? std::string(utf8) : Shown(SampleHost::ReadText(Json(std::string(utf8))));
}

std::string_view EntityOf(char byte) {
    switch (byte) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return {};
    }
}

void MakeVisible(Json& json) {
    if (json.is_string()) {
        json = Visible(json.get_ref<const std::string&>());
    } else if (json.is_array()) {
        for (Json& item : json)
            MakeVisible(item);
    } else if (json.is_object()) {
        Json visible = Json::object();
        for (auto& [name, value] : json.items()) {
            MakeVisible(value);
            visible[Visible(name)] = std::move(value);
        }
        json = std::move(visible);
    }
}

} // namespace

std::string Html(std::string_view utf8) {
    std::string html;
    for (const char byte : Visible(utf8))
        if (const std::string_view entity = EntityOf(byte); entity.empty())
            html += byte;
        else
            html += entity;
    return html;
}

std::string Element(std::string_view tag, std::string_view content) { return Element(tag, "", content); }

std::string Element(std::string_view tag, std::string_view attributes, std::string_view content) {
    std::string html = "<";
    html.append(tag).append(attributes).append(">").append(content).append("</").append(tag).append(">");
    return html;
}

std::string Attribute(std::string_view name, std::string_view value) {
    std::string attribute = " ";
    return attribute.append(name).append("=\"").append(Html(value)).append("\"");
}

std::string DataBlockJson(Json json) {
    MakeVisible(json);
    std::string text = json.dump(-1, ' ', true, Json::error_handler_t::replace);
    std::string block;
    for (const char byte : text)
        if (byte == '<')
            block += "\\u003c";
        else
            block += byte;
    return block;
}

std::string PolicyHash(std::string_view text) {
    Extra::Collection::Sha256Digest digest;
    Extra::Collection::Sha256Hash({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, digest);
    return "sha256-" + SampleHost::ToUtf8(Common::Base64Encode(digest));
}

} // namespace Zuvan::Lumeq::Tool
