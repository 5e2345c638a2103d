// The COM apartment of the calling thread.
#pragma once

#include <windows.h>

#include <objbase.h>

namespace Zuvan::Lumeq::Testing {

constexpr HRESULT NotInitialized = static_cast<HRESULT>(0x800401F0);

/// S_OK in an apartment, whose kind is then in `type`; NotInitialized in none.
inline HRESULT ApartmentOfThread(APTTYPE& type) {
    APTTYPEQUALIFIER qualifier{};
    return CoGetApartmentType(&type, &qualifier);
}

inline HRESULT ApartmentOfThread() {
    APTTYPE type{};
    return ApartmentOfThread(type);
}

} // namespace Zuvan::Lumeq::Testing
