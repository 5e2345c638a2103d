// The two exports that report a document of the host: a form that was submitted, a report that was generated.
#pragma once

#include "LumeqApi/Arguments.h"

#include <string>

namespace Zuvan::Lumeq::API {

struct DocumentArguments {
    const std::wstring& orgName;
    const std::wstring& codeName;
    const std::wstring& name; ///< `formName` or `reportName`.
    const std::wstring& version;
    const StringDictionary& details;
};

/// Each is the whole of an export.
void PostForm(const DocumentArguments& form, const ContextArguments& context);
void PostReport(const DocumentArguments& report, const ContextArguments& context);

} // namespace Zuvan::Lumeq::API
