// The user's choice, and a pause.
#include "Common/Text.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/PauseState.h"
#include "lumeq/Output.h"
#include "lumeq/doctor/Examination.h"

namespace Zuvan::Lumeq::Tool::Doctor {

using namespace LumeqShim;

namespace {

/// A pause stores the choice under another key, and declines for as long as it lasts.
bool IsPaused(const SettingsFile& local) { return IsFlag(local.TextOf(OptinBeforePauseKey)); }

std::string PauseText(const SettingsFile& local) {
    return IsTrueFlag(local.TextOf(OptinBeforePauseKey)) ? "the user had agreed before the pause"
                                                         : "the user had not agreed before the pause";
}

} // namespace

void CheckChoice(Examination& examination) {
    const SettingsFile& local = examination.local;
    Report& report = examination.report;
    if (local.exists && !local.IsAccepted())
        return; // The check of the local file says why.
    const std::wstring value = local.TextOf(UserOptInKey);
    if (IsPaused(local))
        report.Wrong(Id::PauseLeft, PauseText(local));
    else if (Common::IsBlank(value))
        report.Wrong(Id::ChoiceMissing, local.exists ? "no UserOptIn in the local settings file"
                                                     : "there is no local settings file yet");
    else if (!IsFlag(value))
        report.Wrong(Id::ChoiceInvalid, "UserOptIn is " + Quoted(value));
    else if (!IsTrueFlag(value))
        report.Wrong(Id::ChoiceIsNo, "UserOptIn is False");
    else
        report.Well(Check::Choice, "the user has agreed");
}

} // namespace Zuvan::Lumeq::Tool::Doctor
