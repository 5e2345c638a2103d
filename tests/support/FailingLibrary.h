// The library as a separate file, whose memory runs out at a test's command.
#pragma once

#include "support/ImportedFunction.h"
#include "support/failing_library/FailingLibraryControl.h"

#include <objbase.h>
#include <optional>

namespace Zuvan::Lumeq::Testing {

/// Loaded on construction, freed on destruction. State that the library keeps for its life starts fresh each
/// time. One at a time.
class FailingLibrary {
public:
    /// Throws if the previous one is still loaded.
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

    /// How many successful COM initialisations the library has not undone.
    static int OpenApartments();

private:
    void* FindAddress(const char* name) const;

    HMODULE _module;
    const FailingLibraryControl* _control;
    std::optional<ImportedFunction<decltype(CoInitializeEx)>> _initializing;
    std::optional<ImportedFunction<decltype(CoUninitialize)>> _uninitializing;
};

} // namespace Zuvan::Lumeq::Testing
