#include "LumeqApi/Patterns.h"

namespace Zuvan::Lumeq::API {

namespace {

using Common::LetterCase;

// An advertisement's texts may be empty, may hold spaces inside, and neither begin nor end with one.
constexpr wchar_t AdText[] = LR"(^([^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*)?$)";

} // namespace

const Common::Pattern
    appNamePattern(LR"(^([^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*)$)",
                   LetterCase::Ignored);
const Common::Pattern biidPattern(LR"(^(unknown|[a-f0-9]{64})$)");
const Common::Pattern adNamePattern(AdText, LetterCase::Ignored);
const Common::Pattern adProductPattern(AdText, LetterCase::Ignored);
const Common::Pattern adVariantPattern(AdText, LetterCase::Ignored);
const Common::Pattern codeNamePattern(LR"(^[a-z]+$)");
const Common::Pattern controlNamePattern(LR"(^[a-z0-9]([-\w]*[a-z0-9])?$)", LetterCase::Ignored);
const Common::Pattern contextPattern(LR"(^[^\x00-\x1f\x80-\x9f]{1,128}$)", LetterCase::Ignored);
const Common::Pattern flowPattern(LR"(^([a-z0-9](\w*[a-z0-9])?)?$)", LetterCase::Ignored);
const Common::Pattern formNamePattern(LR"(^[a-z]+(_[a-z]+)?$)");
const Common::Pattern installNamePattern(LR"(^[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+$)", LetterCase::Ignored);
const Common::Pattern installVersionPattern(LR"(^[0-9]+\.[0-9]+\.[0-9]+(\.[0-9]+)?$)");
const Common::Pattern
    subpathPattern(LR"(^(\\?[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+(\\[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+)*\\?)$)");
const Common::Pattern modePattern(LR"(^([a-z0-9]+)((_[a-z0-9]+)?)*$)", LetterCase::Ignored);
const Common::Pattern orgNamePattern(LR"(^[a-z]+$)");
const Common::Pattern
    paperSizePattern(LR"(^[^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*$)",
                     LetterCase::Ignored);
const Common::Pattern reportNamePattern(LR"(^[a-z]+(_[a-z]+)?$)");
const Common::Pattern screenNamePattern(LR"(^[a-z0-9](\w*[a-z0-9])?$)", LetterCase::Ignored);
const Common::Pattern screenPathPattern(LR"(^([a-z0-9]\w*(/[a-z0-9]\w*)*)?$)", LetterCase::Ignored);
const Common::Pattern taskResultPattern(LR"(^(success|unknown|error(_(\d+|[a-zA-Z][a-zA-Z0-9]*))?)$)");
const Common::Pattern urlPattern(LR"(^(file|https?)://[^/]+(/[^\s?]*)?$)", LetterCase::Ignored);
const Common::Pattern schemaVersionPattern(LR"(^\d+\.\d+$)", LetterCase::Ignored);

} // namespace Zuvan::Lumeq::API
