// Works around libstdc++: its handler of std::terminate prints the type of the exception. For that it
// contains a demangler and formatted output, which add a tenth to this DLL, and a host without a console
// shows nothing of it. This one ends the process in the same way without the text.
//
// No longer needed once host.library_file_tests pass without this file.
#include <cstdlib>

namespace __gnu_cxx {

[[noreturn]] void __verbose_terminate_handler();
void __verbose_terminate_handler() { std::abort(); }

} // namespace __gnu_cxx
