#pragma once

#include "LumeqApi/Patterns.h"
#include "fuzz/support/PlainPatterns.h"

namespace Zuvan::Lumeq::Fuzzing {

/// The product's patterns, in the order of Kind up to SchemaVersion.
inline const Common::Pattern* const ExportPatterns[] = {
    &API::appNamePattern,       &API::biidPattern,        &API::adNamePattern,
    &API::adProductPattern,     &API::adVariantPattern,   &API::codeNamePattern,
    &API::controlNamePattern,   &API::contextPattern,     &API::flowPattern,
    &API::formNamePattern,      &API::installNamePattern, &API::installVersionPattern,
    &API::subpathPattern,       &API::modePattern,        &API::orgNamePattern,
    &API::paperSizePattern,     &API::reportNamePattern,  &API::screenNamePattern,
    &API::screenPathPattern,    &API::taskResultPattern,  &API::urlPattern,
    &API::schemaVersionPattern,
};

} // namespace Zuvan::Lumeq::Fuzzing
