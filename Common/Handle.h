// Owners for the operating system's handles.
#pragma once

#include <utility>

namespace Zuvan::Lumeq::Common {

/// Owns one handle. `Traits` tells its type, the value that stands for none, and how to close it.
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

    /// Gives the handle up without closing it.
    Value Release() noexcept { return std::exchange(_value, Traits::None()); }

    void Reset(Value value = Traits::None()) noexcept {
        const Value old = std::exchange(_value, value);
        if (old != Traits::None() && old != value)
            Traits::Close(old);
    }

    /// For functions that give a handle through a pointer. Closes what is held.
    Value* Receive() noexcept {
        Reset();
        return &_value;
    }

private:
    Value _value = Traits::None();
};

} // namespace Zuvan::Lumeq::Common
