// The event schema's patterns, one for each kind of argument, as tables that the compiler made. Which of
// them ignore case is part of the schema, and so is that kinds with one text keep objects of their own.
#pragma once

#include "Common/Pattern.h"

namespace Zuvan::Lumeq::API {

extern const Common::Pattern appNamePattern;
extern const Common::Pattern biidPattern;
extern const Common::Pattern adNamePattern;
extern const Common::Pattern adProductPattern;
extern const Common::Pattern adVariantPattern;
extern const Common::Pattern codeNamePattern;
extern const Common::Pattern controlNamePattern;
extern const Common::Pattern contextPattern;
extern const Common::Pattern flowPattern;
extern const Common::Pattern formNamePattern;
extern const Common::Pattern installNamePattern;
extern const Common::Pattern installVersionPattern;
extern const Common::Pattern subpathPattern;
extern const Common::Pattern modePattern;
extern const Common::Pattern orgNamePattern;
extern const Common::Pattern paperSizePattern;
extern const Common::Pattern reportNamePattern;
extern const Common::Pattern screenNamePattern;
extern const Common::Pattern screenPathPattern;
extern const Common::Pattern taskResultPattern;
extern const Common::Pattern urlPattern;
extern const Common::Pattern schemaVersionPattern;

} // namespace Zuvan::Lumeq::API
