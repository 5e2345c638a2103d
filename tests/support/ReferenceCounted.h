// The common part of the tests' COM objects.
#pragma once

#include <atomic>
#include <unknwn.h>

namespace Zuvan::Lumeq::Testing {

/// Destroyed with its last reference; its creator owns the first. QueryInterface always fails, because nobody
/// is expected to ask for another interface.
template <class Interface>
class ReferenceCounted : public Interface {
public:
    ReferenceCounted() = default;
    ReferenceCounted(const ReferenceCounted&) = delete;
    ReferenceCounted& operator=(const ReferenceCounted&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --_references;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~ReferenceCounted() = default;

private:
    std::atomic<ULONG> _references{1};
};

} // namespace Zuvan::Lumeq::Testing
