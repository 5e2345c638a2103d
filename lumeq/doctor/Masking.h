// Removing what identifies a person, a device or an account from texts that leave the machine.
#pragma once

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool::Doctor {

class Masking {
public:
    /// Masks each of these texts wherever it occurs, in any letter case; those of less than three characters
    /// are ignored.
    explicit Masking(std::vector<std::string> secrets) : _secrets(std::move(secrets)) {}

    /// A settings file, a log or a report, in UTF-8. Masks the secrets; tokens, also those of earlier
    /// settings; GUIDs and long runs of hexadecimal digits; identifiers of devices; encoded messages; e-mail
    /// addresses; and the names of users in paths. Prefers masking too much.
    std::string Masked(std::string text) const;

private:
    std::vector<std::string> _secrets;
};

} // namespace Zuvan::Lumeq::Tool::Doctor
