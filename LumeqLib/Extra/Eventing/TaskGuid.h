// The identifier that ties the two events of a task together.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// A UUID in the platform's byte order.
using TaskGuid = std::array<std::uint8_t, 16>;

/// Returns a new one. If the system fails, returns what it left there, at worst all zeros.
TaskGuid NewTaskGuid();

/// Returns 36 characters with hyphens, in lower case, or nothing if the system fails.
std::optional<std::wstring> RenderTaskGuid(const TaskGuid& guid);

/// The text for the records, also for a rendering that failed.
inline std::wstring TaskGuidText(const std::optional<std::wstring>& rendered) {
    return rendered.value_or(L"Error!");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
