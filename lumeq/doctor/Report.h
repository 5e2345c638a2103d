// What the checks have found on this machine.
#pragma once

#include "lumeq/doctor/Kinds.h"

#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool::Doctor {

/// One line of the report, in UTF-8.
struct Finding {
    Check check;
    std::optional<Id> id; ///< None if all is well.
    Effect effect;        ///< That of the kind, unless the machine makes it milder.
    std::string detail;   ///< What was seen.
};

class Report {
public:
    void Well(Check check, std::string detail) {
        _findings.push_back({check, {}, Effect::Notes, std::move(detail)});
    }
    void Wrong(Id id, std::string detail) { Wrong(id, KindOf(id).effect, std::move(detail)); }
    void Wrong(Id id, Effect effect, std::string detail) {
        _findings.push_back({KindOf(id).check, id, effect, std::move(detail)});
    }

    const std::vector<Finding>& Findings() const { return _findings; }

    /// The finding that keeps most from arriving, and the first of these; null if everything can arrive.
    const Finding* Blocker() const {
        const Finding* worst = nullptr;
        for (const Finding& finding : _findings)
            if (finding.id && finding.effect <= Effect::LosesEvents &&
                (!worst || finding.effect < worst->effect))
                worst = &finding;
        return worst;
    }

private:
    std::vector<Finding> _findings;
};

} // namespace Zuvan::Lumeq::Tool::Doctor
