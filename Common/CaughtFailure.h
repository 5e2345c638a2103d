// The kinds of failure that the library distinguishes.
#pragma once

#include "Common/Exceptions.h"

#include <windows.h>

#include <comdef.h>
#include <exception>

namespace Zuvan::Lumeq::Common {

/// In a catch clause: calls `sink` with the exception that is being handled, as a VestoException,
/// `_com_error` or std::exception, or without an argument for anything else. A sink that does not distinguish
/// the library's own exceptions has no overload for them and receives each as a std::exception.
template <class Sink>
void VisitCaughtFailure(const Sink& sink) {
    try {
        throw;
    } catch (const VestoException& failure) {
        sink(failure);
    } catch (const _com_error& failure) {
        sink(failure);
    } catch (const std::exception& failure) {
        sink(failure);
    } catch (...) {
        sink();
    }
}

} // namespace Zuvan::Lumeq::Common
