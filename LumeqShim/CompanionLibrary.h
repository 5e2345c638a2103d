// The companion library LumeqShim.Managed.dll and its operations, loaded at first use.
//
// The library is taken from the folder of the host executable, else from the folder of the module that this
// code is in, always by its full path: never from a search path, where anybody could have put one. Once
// loaded it stays for the life of the process. Only under the API lock.
#pragma once

namespace Zuvan::LumeqShim {

/// The address of an operation of the companion library, never null. Throws a VestoException that names the
/// file, and the operation if that is what is missing; the next call tries again.
void* FindCompanionOperation(const char* name);

/// One operation as a function of this program. Looked up at the first call, which can throw what
/// FindCompanionOperation throws; every call can throw what the operation throws.
template <class Signature>
class CompanionOperation;

template <class Result, class... Arguments>
class CompanionOperation<Result(Arguments...)> {
public:
    constexpr explicit CompanionOperation(const char* name) : _name(name) {}

    Result operator()(Arguments... arguments) {
        if (!_function)
            _function = reinterpret_cast<Result (*)(Arguments...)>(FindCompanionOperation(_name));
        return _function(arguments...);
    }

private:
    const char* _name;
    Result (*_function)(Arguments...) = nullptr;
};

} // namespace Zuvan::LumeqShim
