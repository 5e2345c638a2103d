// The C++ library keeps memory aside for exceptions that are thrown when there is none, from its loading on,
// and does not give it back by itself when a host lets this library go.

namespace __gnu_cxx {
void __freeres();
}

namespace {

/// Goes after all other static objects but the thread's variables, which a throw needs however it gets
/// memory: their number is the lower one.
class EmergencyMemory {
public:
    ~EmergencyMemory() { __gnu_cxx::__freeres(); }
};
__attribute__((init_priority(103))) EmergencyMemory emergencyMemory;

} // namespace
