// The fake mscoree.dll's interface for tests.
//
// The environment variable LUMEQ_FAKE_MSCOREE scripts the fake: words separated by commas, in any order.
// Without the variable it knows no runtime.
//   v4.0.30319         an installed runtime with this version text; any number of them, in this order
//   unsure:v4.0.30319  one whose GetVersionString writes the text but fails
//   nameless           one whose GetVersionString fails and writes nothing
//   fail:CALL          CALL fails: load (of the library itself), CLRCreateInstance (0x80131700),
//                      EnumerateInstalledRuntimes (0x80004005), Next (0x80004005, after the last runtime)
//   false:CALL         CLRCreateInstance, with the host object, or EnumerateInstalledRuntimes returns 1,
//   which is
//                      not an error code but not zero either
//   managed:CALL       CALL raises an exception of the managed runtime: any of the above except load, or
//                      GetVersionString
//   throw:CALL         EnumerateInstalledRuntimes or GetVersionString throws a C++ exception
//   once               the library can be loaded once, and not again after it was freed
#pragma once

#include <cstdint>

namespace Zuvan::Lumeq::Testing {

/// Objects that the fake created and nobody has released, and its observations of the caller.
struct FakeMscoreeState {
    std::int32_t hosts;
    std::int32_t enumerators;
    std::int32_t runtimes;
    /// How often CLRCreateInstance was called on a thread in a single-threaded apartment.
    std::int32_t callsInApartment;
};

/// Exported as "FakeMscoree_State".
extern "C" using FakeMscoreeStateFunction = const FakeMscoreeState * ();

} // namespace Zuvan::Lumeq::Testing
