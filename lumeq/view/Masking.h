// Hides what identifies somebody or opens a door, so that a page can be passed on.
#pragma once

#include "lumeq/view/Run.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

/// Replaces letters and digits by "x", so that lengths and shapes stay. A number at the end of a hidden value
/// says which of them it is: the same value has the same number.
class Masking {
public:
    explicit Masking(const Catalogue& catalogue);

    void Hide(std::vector<Run>& runs);

    /// A text of the runs that Hide has seen: UUIDs, hashes, hardware addresses, user names in paths, the
    /// user and password of a URL, and bearer tokens.
    std::string Hidden(const std::string& text);

private:
    void Learn(const Run& run);
    void LearnFrom(const Json& json);
    void LearnToken(const std::string& text);
    void LearnSecret(const std::string& value);

    void HideRun(Run& run);
    void HideCall(ViewedCall& call);
    void HideMessage(ViewedMessage& message);
    void HideWire(std::string& wire);
    void HideJson(Json& json);
    void HideText(std::string& text);
    void HideLines(std::vector<LogLine>& lines);
    std::string StandIn(const std::string& value);

    std::set<std::string> _fields; ///< Whose values identify a device.
    std::set<std::string> _spared; ///< Random values that link two events and nothing else.
    std::vector<std::string> _secrets;
    std::map<std::string, std::size_t> _numbers;
};

} // namespace Zuvan::Lumeq::Tool
