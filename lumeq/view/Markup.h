// HTML as text. Every text that comes from a run passes through here.
#pragma once

#include "lumeq/Catalogue.h"

#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Tool {

/// For content and quoted attributes: markup is escaped, and what cannot be seen is spelled out.
std::string Html(std::string_view utf8);

/// `content` is markup.
std::string Element(std::string_view tag, std::string_view content);
/// `attributes` is markup: Attribute makes each.
std::string Element(std::string_view tag, std::string_view attributes, std::string_view content);
/// ' name="value"'
std::string Attribute(std::string_view name, std::string_view value);

/// JSON for a data block inside a page: no character of it can end the block, and what cannot be seen in its
/// texts is spelled out. On one line.
std::string DataBlockJson(Json json);

/// "sha256-...", as a Content-Security-Policy names an inline script or style.
std::string PolicyHash(std::string_view text);

} // namespace Zuvan::Lumeq::Tool
