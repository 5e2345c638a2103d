// Works around libstdc++: it allocates a reserve of memory for exceptions when the DLL is loaded and does not
// free it when the DLL is unloaded, so a host that loads and unloads Lumeq again and again loses that memory
// each time.
//
// No longer needed once host.load_unload_tests and host.runtime_tests pass without this file.

namespace __gnu_cxx {
void __freeres();
}

namespace {

/// Destroyed after every other static object, since their destructors may throw. Only the thread variables
/// (ThreadVariables.cpp) are destroyed later: a throw needs those wherever its memory comes from, so their
/// priority number is lower.
class EmergencyMemory {
public:
    ~EmergencyMemory() { __gnu_cxx::__freeres(); }
};
__attribute__((init_priority(103))) EmergencyMemory emergencyMemory;

} // namespace
