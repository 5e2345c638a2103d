// Recorded texts, compared with what a test expects and shown to its reader.
#pragma once

#include "samples/host/Json.h"

#include <Lumeq/lumeq_test.h>

#include <span>
#include <string>

namespace Zuvan::Lumeq::Double {

using Expected = std::span<const lumeq_test_argument>;

/// Empty if `recorded` comes from such a call.
std::string Mismatch(const SampleHost::Json& recorded, const std::string& exportName, Expected arguments);

/// In a line to read.
std::string Shown(const SampleHost::Json& recorded);
std::string Shown(const std::string& exportName, Expected arguments);

/// All events and refusals, a line for each.
std::string ShownRecording();

/// Empty if any event comes from such a call.
std::string MissingEvent(const std::string& exportName, Expected arguments);

} // namespace Zuvan::Lumeq::Double
