// What the library refuses, in the words of the linter.
#pragma once

#include "samples/host/Json.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Double {

/// Records why a call was refused. `reports`: the lines at ERROR that the library logged for it.
void RecordRefusals(const SampleHost::Json& call, const std::vector<std::wstring>& reports) noexcept;

} // namespace Zuvan::Lumeq::Double
