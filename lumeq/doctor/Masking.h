// Removing what identifies a person, a device or an account from texts that leave the machine.
#pragma once

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool::Doctor {

class TextMasking {
public:
    /// Masks the secrets anywhere and the names as whole words, because a user may be called "log"; both in
    /// any letter case. Those of less than three characters are ignored.
    explicit TextMasking(std::vector<std::string> secrets, std::vector<std::string> names = {})
        : _secrets(std::move(secrets)), _names(std::move(names)) {}

    /// A settings file, a log or a report, in UTF-8. Masks the secrets; tokens, also those of earlier
    /// settings; GUIDs, hashes and hardware addresses; serial numbers; encoded messages; e-mail addresses;
    /// and the users in paths and URLs. Prefers masking too much.
    std::string Masked(std::string text) const;

private:
    std::vector<std::string> _secrets, _names;
};

} // namespace Zuvan::Lumeq::Tool::Doctor
