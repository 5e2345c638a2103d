// Owners of the operating system's handles.
#pragma once

#include <utility>

namespace Zuvan::Lumeq::Common {

/// Owns one handle. `Traits` defines its type, the value that means none, and how to close it.
template <class Traits>
class UniqueHandle {
public:
    using Value = typename Traits::Value;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Value value) noexcept : _value(value) {}
    UniqueHandle(UniqueHandle&& other) noexcept : _value(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        Reset(other.Release());
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    Value Get() const noexcept { return _value; }
    explicit operator bool() const noexcept { return _value != Traits::None(); }

    /// Returns the handle without closing it.
    Value Release() noexcept { return std::exchange(_value, Traits::None()); }

    void Reset(Value value = Traits::None()) noexcept {
        const Value old = std::exchange(_value, value);
        if (old != Traits::None() && old != value)
            Traits::Close(old);
    }

    /// For functions that return a handle through a pointer. Closes the handle held so far.
    Value* Receive() noexcept {
        Reset();
        return &_value;
    }

private:
    Value _value = Traits::None();
};

} // namespace Zuvan::Lumeq::Common
