// The companion library LumeqShim.Managed.dll and its operations, loaded at first use.
//
// The library comes from the folder of the host executable, or else from the folder of the module that
// contains this code. It is loaded by its full path, never along a search path, where anybody could plant
// one. Once loaded it stays for the life of the process. Only under the API lock.
#pragma once

#include "Common/ComSession.h"
#include "LumeqShim/ForeignCall.h"

#include <string>

namespace Zuvan::LumeqShim {

/// The path beside the executable `host`, unless the file exists only beside the module. Empty if `host` is.
std::wstring CompanionPathFor(const std::wstring& host, const std::wstring& module);

/// Loads the library and returns its handle, which the caller does not free. Throws FileNotFoundException or
/// FileFormatException.
void* LoadCompanionFrom(const std::wstring& path);

/// The address of an operation of the companion library, never null. If the library or the operation is
/// missing, throws a VestoException that names it; the next call tries again.
void* FindCompanionOperation(const char* name);

/// One operation, callable like a function. Every call can throw what the operation throws, and
/// ManagedException; the first one, which looks the operation up, also what FindCompanionOperation throws.
template <class Signature>
class CompanionOperation;

template <class Result, class... Arguments>
class CompanionOperation<Result(Arguments...)> {
public:
    constexpr explicit CompanionOperation(const char* name) : _name(name) {}

    Result operator()(Arguments... arguments) {
        // The first call runs foreign code already while it loads the library.
        Lumeq::Common::ComSession::Suspend();
        if (!_function)
            _function = reinterpret_cast<Result (*)(Arguments...)>(FindCompanionOperation(_name));
        return CallForeign([&] { return _function(arguments...); });
    }

private:
    const char* _name;
    Result (*_function)(Arguments...) = nullptr;
};

} // namespace Zuvan::LumeqShim
