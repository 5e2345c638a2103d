// The library as a file of its own, whose memory runs out when a test says so.
#pragma once

#include "support/ImportedFunction.h"
#include "support/failing_library/FailingLibraryControl.h"

#include <objbase.h>
#include <optional>

namespace Zuvan::Lumeq::Testing {

/// Loaded from construction on, freed at the end: whatever the library keeps for the life of its own starts
/// anew with each. One at a time.
class FailingLibrary {
public:
    /// Throws where the one before it is still loaded.
    FailingLibrary();
    ~FailingLibrary();
    FailingLibrary(const FailingLibrary&) = delete;
    FailingLibrary& operator=(const FailingLibrary&) = delete;

    /// An export, by its plain name. Throws if there is none.
    template <class Function>
    Function* Find(const char* name) const {
        return reinterpret_cast<Function*>(FindAddress(name));
    }
    HMODULE Module() const { return _module; }
    const FailingLibraryControl& Control() const { return *_control; }

    /// How often the library has initialised COM with success and not undone it.
    static int OpenApartments();

private:
    void* FindAddress(const char* name) const;

    HMODULE _module;
    const FailingLibraryControl* _control;
    std::optional<ImportedFunction<decltype(CoInitializeEx)>> _initializing;
    std::optional<ImportedFunction<decltype(CoUninitialize)>> _uninitializing;
};

} // namespace Zuvan::Lumeq::Testing
