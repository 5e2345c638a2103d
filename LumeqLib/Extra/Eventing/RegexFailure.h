// What a failure of the regular-expression engine becomes.
#pragma once

#include "Common/Exceptions.h"
#include "Common/Utf.h"

#include <regex>
#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// What `match()` gives. Its std::regex_error, from compiling or from matching, becomes a
/// ValidationErrorException that carries `paramName` and the text in question.
template <class Match>
bool MatchOrReport(const wchar_t* paramName, const std::wstring& text, Match match) {
    try {
        return match();
    } catch (const std::regex_error& failure) {
        throw Common::ValidationErrorException(
            paramName, L"Regex exception occurred: " + Common::WidenLossy(failure.what()), text);
    }
}

} // namespace Zuvan::Lumeq::Extra::Eventing
