// Why a pattern refuses a text, in words.
#pragma once

#include "Common/Pattern.h"
#include "lumeq/Catalogue.h"
#include "lumeq/Output.h"

#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Tool {

struct Explanation {
    bool isAccepted = false;
    /// Each character may stand where it stands, but the text may not end there.
    bool endsTooEarly = false;
    /// The first character after which nothing could be accepted any more; the text's size if there is none.
    std::size_t at = 0;
};

/// Walks the library's own table.
Explanation Explain(const Common::Pattern& pattern, std::wstring_view text);

/// A text that a pattern of the library refuses.
struct RefusedText {
    std::string pattern;
    std::wstring text;
};

/// What the pattern asks for and the nearest text that would pass, or examples if none is near.
std::string AdviceFor(const Catalogue& catalogue, const RefusedText& refused);

/// The text, and a caret with the advice below it. Of a long text only the surroundings of the caret.
void ShowRefusedText(const Catalogue& catalogue, const RefusedText& refused, const Output& output);

/// The same for scripts: text, pattern, place, words and nearest text.
Json RefusedTextJson(const Catalogue& catalogue, const RefusedText& refused);

} // namespace Zuvan::Lumeq::Tool
