// The C++ library keeps memory aside for exceptions that are thrown when there is none, from its loading on,
// and does not give it back by itself when a host lets this library go.

namespace __gnu_cxx {
void __freeres();
}

namespace {

/// Made before nearly all other static objects, so that it goes after them.
class EmergencyMemory {
public:
    ~EmergencyMemory() { __gnu_cxx::__freeres(); }
};
__attribute__((init_priority(102))) EmergencyMemory emergencyMemory;

} // namespace
