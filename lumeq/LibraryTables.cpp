#include "lumeq/LibraryTables.h"

#include "Common/Exceptions.h"
#include "Common/Utf.h"
#include "LumeqApi/Patterns.h"
#include "LumeqLib/Extra/Eventing/Enumerations.h"
#include "LumeqLib/Extra/Eventing/EventingTask.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "LumeqLib/Extra/Eventing/TaskDetails.h"

#include <map>
#include <tuple>

namespace Zuvan::Lumeq::Tool {

namespace {

using namespace API;
namespace Classes = Extra::Eventing;

const std::map<std::string, const Common::Pattern*>& Patterns() {
    static const std::map<std::string, const Common::Pattern*> patterns{
        {"appName", &appNamePattern},
        {"biid", &biidPattern},
        {"adName", &adNamePattern},
        {"adProduct", &adProductPattern},
        {"adVariant", &adVariantPattern},
        {"codeName", &codeNamePattern},
        {"controlName", &controlNamePattern},
        {"context", &contextPattern},
        {"flow", &flowPattern},
        {"formName", &formNamePattern},
        {"installName", &installNamePattern},
        {"installVersion", &installVersionPattern},
        {"subpath", &subpathPattern},
        {"mode", &modePattern},
        {"orgName", &orgNamePattern},
        {"paperSize", &paperSizePattern},
        {"reportName", &reportNamePattern},
        {"screenName", &screenNamePattern},
        {"screenPath", &screenPathPattern},
        {"taskResult", &taskResultPattern},
        {"url", &urlPattern},
        {"schemaVersion", &schemaVersionPattern},
        {"urlLabel", &Classes::urlLabelPattern},
        {"hyperlinkLabel", &Classes::hyperlinkLabelPattern},
        {"reportMoniker", &Classes::reportMonikerPattern},
        {"formMoniker", &Classes::formMonikerPattern},
        {"completedResult", &Classes::completedResultPattern},
        {"recordedVersion", &Classes::recordedVersionPattern},
    };
    return patterns;
}

template <class Api, class Record>
LibraryEnumeration Of(const Classes::Enumeration<Api, Record>&) {
    using Classes::ToRecord;
    return {[](std::int32_t value) {
                try {
                    static_cast<void>(ToRecord(static_cast<Api>(value)));
                    return true;
                } catch (const Common::ArgumentOutOfRangeException&) {
                    return false;
                }
            },
            [](std::int32_t value) { return Classes::ApiText(static_cast<Api>(value)); },
            [](std::int32_t value) { return static_cast<std::int32_t>(ToRecord(static_cast<Api>(value))); }};
}

const std::map<std::string, LibraryEnumeration>& Enumerations() {
    static const auto enumerations = std::apply(
        [](const auto&... its) {
            return std::map<std::string, LibraryEnumeration>{{Common::ToUtf8(its.names.api), Of(its)}...};
        },
        Classes::Enumerations.all);
    return enumerations;
}

template <class Value>
std::vector<std::string> NamesOf(const std::map<std::string, Value>& named) {
    std::vector<std::string> names;
    for (const auto& entry : named)
        names.push_back(entry.first);
    return names;
}

} // namespace

const Common::Pattern& LibraryPattern(const std::string& name) { return *Patterns().at(name); }

std::vector<std::string> LibraryPatternNames() { return NamesOf(Patterns()); }

const LibraryEnumeration& EnumerationOfLibrary(const std::string& name) { return Enumerations().at(name); }

std::vector<std::string> LibraryEnumerationNames() { return NamesOf(Enumerations()); }

} // namespace Zuvan::Lumeq::Tool
