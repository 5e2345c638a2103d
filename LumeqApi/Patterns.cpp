#include "LumeqApi/Patterns.h"

#include "Common/CompiledPattern.h"

namespace Zuvan::Lumeq::API {

namespace {

using Common::CompiledPattern;
constexpr auto Ignored = Common::LetterCase::Ignored;

// An advertisement's texts may be empty, may hold spaces inside, and neither begin nor end with one.
constexpr Common::Pattern AdText =
    CompiledPattern<LR"(^([^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*)?$)", Ignored>;

} // namespace

constinit const Common::Pattern appNamePattern =
    CompiledPattern<LR"(^([^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*)$)", Ignored>;
constinit const Common::Pattern biidPattern = CompiledPattern<LR"(^(unknown|[a-f0-9]{64})$)">;
constinit const Common::Pattern adNamePattern = AdText;
constinit const Common::Pattern adProductPattern = AdText;
constinit const Common::Pattern adVariantPattern = AdText;
constinit const Common::Pattern codeNamePattern = CompiledPattern<LR"(^[a-z]+$)">;
constinit const Common::Pattern controlNamePattern =
    CompiledPattern<LR"(^[a-z0-9]([-\w]*[a-z0-9])?$)", Ignored>;
constinit const Common::Pattern contextPattern =
    CompiledPattern<LR"(^[^\x00-\x1f\x80-\x9f]{1,128}$)", Ignored>;
constinit const Common::Pattern flowPattern = CompiledPattern<LR"(^([a-z0-9](\w*[a-z0-9])?)?$)", Ignored>;
constinit const Common::Pattern formNamePattern = CompiledPattern<LR"(^[a-z]+(_[a-z]+)?$)">;
constinit const Common::Pattern installNamePattern =
    CompiledPattern<LR"(^[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+$)", Ignored>;
constinit const Common::Pattern installVersionPattern =
    CompiledPattern<LR"(^[0-9]+\.[0-9]+\.[0-9]+(\.[0-9]+)?$)">;
constinit const Common::Pattern subpathPattern =
    CompiledPattern<LR"(^(\\?[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+(\\[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+)*\\?)$)">;
constinit const Common::Pattern modePattern = CompiledPattern<LR"(^([a-z0-9]+)((_[a-z0-9]+)?)*$)", Ignored>;
constinit const Common::Pattern orgNamePattern = CompiledPattern<LR"(^[a-z]+$)">;
constinit const Common::Pattern paperSizePattern =
    CompiledPattern<LR"(^[^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*$)", Ignored>;
constinit const Common::Pattern reportNamePattern = CompiledPattern<LR"(^[a-z]+(_[a-z]+)?$)">;
constinit const Common::Pattern screenNamePattern = CompiledPattern<LR"(^[a-z0-9](\w*[a-z0-9])?$)", Ignored>;
constinit const Common::Pattern screenPathPattern =
    CompiledPattern<LR"(^([a-z0-9]\w*(/[a-z0-9]\w*)*)?$)", Ignored>;
constinit const Common::Pattern taskResultPattern =
    CompiledPattern<LR"(^(success|unknown|error(_(\d+|[a-zA-Z][a-zA-Z0-9]*))?)$)">;
constinit const Common::Pattern urlPattern =
    CompiledPattern<LR"(^(file|https?)://[^/]+(/[^\s?]*)?$)", Ignored>;
constinit const Common::Pattern schemaVersionPattern = CompiledPattern<LR"(^\d+\.\d+$)", Ignored>;

} // namespace Zuvan::Lumeq::API
