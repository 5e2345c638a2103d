// The report as the program prints it.
#pragma once

#include "lumeq/Output.h"
#include "lumeq/doctor/Examination.h"

namespace Zuvan::Lumeq::Tool::Doctor {

/// For a person: the first blocker on top, then a line for each finding.
std::string ReportText(const Examination& examination, const Output& output);

/// For a program.
std::string ReportJson(const Examination& examination);

} // namespace Zuvan::Lumeq::Tool::Doctor
