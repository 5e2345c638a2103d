// What a test can ask of the fake mscoree.dll.
//
// The fake is scripted by the environment variable LUMEQ_FAKE_MSCOREE: words with a comma between them, in
// any order. Without the variable it knows no runtime.
//   v4.0.30319         an installed runtime with this version text; as many as there are, in this order
//   unsure:v4.0.30319  one whose GetVersionString writes the text and fails all the same
//   nameless           one whose GetVersionString fails and writes nothing
//   fail:CALL          CALL gives a failure: load (of the library itself), CLRCreateInstance (0x80131700),
//                      EnumerateInstalledRuntimes (0x80004005), Next (0x80004005, after the last runtime)
//   false:CALL         EnumerateInstalledRuntimes gives 1, which is no error code but not zero either
//   throw:CALL         EnumerateInstalledRuntimes or GetVersionString throws a C++ exception
//   once               the library can be loaded once, and not again after it was freed
#pragma once

#include <cstdint>

namespace Zuvan::Lumeq::Testing {

/// Objects that the fake made and that nobody has released yet, and what it saw of its caller.
struct FakeMscoreeState {
    std::int32_t hosts;
    std::int32_t enumerators;
    std::int32_t runtimes;
    /// How often CLRCreateInstance was called on a thread that was in a single-threaded apartment.
    std::int32_t callsInApartment;
};

/// Exported as "FakeMscoree_State".
extern "C" using FakeMscoreeStateFunction = const FakeMscoreeState * ();

} // namespace Zuvan::Lumeq::Testing
