#include "LumeqLib/Extra/Eventing/TaskGuid.h"

#include "Common/SystemHandles.h"

#include <bit>
#include <rpc.h>

namespace Zuvan::Lumeq::Extra::Eventing {

TaskGuid NewTaskGuid() {
    UUID guid{};
    // Not checked: an identifier that is unique on this machine only serves as well.
    static_cast<void>(UuidCreate(&guid));
    return std::bit_cast<TaskGuid>(guid);
}

std::optional<std::wstring> RenderTaskGuid(const TaskGuid& guid) {
    auto uuid = std::bit_cast<UUID>(guid);
    Common::UniqueRpcString text;
    if (UuidToStringW(&uuid, text.Receive()) != RPC_S_OK)
        return std::nullopt;
    return reinterpret_cast<const wchar_t*>(text.Get());
}

} // namespace Zuvan::Lumeq::Extra::Eventing
