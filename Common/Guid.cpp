#include "Common/Guid.h"

#include <windows.h>

#include <iterator>
#include <objbase.h>
#include <rpc.h>

namespace Zuvan::Lumeq::Common {

std::wstring NewGuidString() {
    UUID guid{};
    // Not checked, because a GUID that is unique on this machine only suffices.
    static_cast<void>(UuidCreate(&guid));
    wchar_t text[40] = {};
    StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
    return text;
}

} // namespace Zuvan::Lumeq::Common
