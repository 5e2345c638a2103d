// Why nothing arrives from this machine.
#pragma once

#include "lumeq/Output.h"
#include "lumeq/doctor/Examination.h"

namespace Zuvan::Lumeq::Tool::Doctor {

/// Examines the machine, prints the report and writes the bundle if it is asked for. Throws
/// std::runtime_error if the application cannot be found.
ExitCode RunDoctor(const DoctorOptions& options, const Output& output);

/// The table of everything that the doctor can find, as docs/doctor.md shows it.
std::string KindsTable();

} // namespace Zuvan::Lumeq::Tool::Doctor
