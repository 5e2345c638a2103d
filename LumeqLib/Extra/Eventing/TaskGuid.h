// The identifier that ties the two events of a task together.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// A UUID, byte for byte as the platform has it.
using TaskGuid = std::array<std::uint8_t, 16>;

/// A new one. If the system has none to give, what it left behind, all zero at worst.
TaskGuid NewTaskGuid();

/// 36 characters with hyphens, in lower case; nothing if the system fails.
std::optional<std::wstring> RenderTaskGuid(const TaskGuid& guid);

/// What stands in the records for a rendering that may have failed.
inline std::wstring TaskGuidText(const std::optional<std::wstring>& rendered) {
    return rendered.value_or(L"Error!");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
