// The choice between the two roads of delivery.
#pragma once

namespace Zuvan::LumeqShim {

/// Whether the managed runtime that the companion library needs is installed; true selects the managed road.
/// The first call probes the machine, and its answer holds for the life of the process, with one exception:
/// if the probe itself fails, that call returns false and every later one true. Never throws. Only under the
/// API lock.
bool IsRequiredDotNetVersionInstalled();

/// Whether a probe found that the runtime is missing. Never probes.
bool IsRequiredRuntimeKnownMissing() noexcept;

/// Whether mscoree.dll exists and has the entry point that the probe needs.
bool IsCLRCreateInstanceSupported();

} // namespace Zuvan::LumeqShim
