// A ZIP file for support: the report, the settings files and the ends of the logs, without secrets.
#pragma once

#include "lumeq/doctor/Examination.h"

namespace Zuvan::Lumeq::Tool::Doctor {

/// Writes the file, which replaces an older one. Throws std::runtime_error if it cannot be written.
void WriteBundle(const Examination& examination, const std::string& reportText, const std::string& path);

} // namespace Zuvan::Lumeq::Tool::Doctor
