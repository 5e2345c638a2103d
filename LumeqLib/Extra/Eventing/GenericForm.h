#pragma once

#include "LumeqLib/Extra/Eventing/GenericDetails.h"

namespace Zuvan::Lumeq::Extra::Eventing {

inline constexpr GenericKind FormKind{
    L"app_event_form_generic/1.0.0", L"form_generic", IsValidFormMoniker,
    // The check refuses the hyphen of this example. Readers of the log know the text, so it stays.
    L"Moniker is not formatted correctly. Must be of form "
    L"x-{orgname}_{codename}_form_{mycrazyname}/{version-1dot} "
    L"(e.g. x-dvrn_tarvik_form_printer-information/1.0)"};

using GenericForm = GenericDetails<FormKind>;

} // namespace Zuvan::Lumeq::Extra::Eventing
