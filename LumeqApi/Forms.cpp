#include "LumeqApi/Forms.h"

#include "LumeqApi/PostEvent.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqLib/Extra/Eventing/GenericForm.h"
#include "LumeqLib/Extra/Eventing/GenericReport.h"
#include "LumeqLib/Extra/Eventing/UiEvents.h"

namespace Zuvan::Lumeq::API {

using namespace Extra::Eventing;

namespace {

/// What distinguishes the two exports. A `Document` is built from a moniker and the host's fields.
template <class Document>
struct DocumentKind {
    ExportName exportName;
    const wchar_t* argName;
    const Common::Pattern& namePattern;
    const wchar_t* monikerWord;
    EventingEvent (*makeEvent)(const Document& document, Dictionary context);
};

constexpr DocumentKind<GenericForm> Form{L"FormSubmitted", L"formName", formNamePattern, L"_form_",
                                         MakeSubmittedEvent};
constexpr DocumentKind<GenericReport> Report{L"ReportGenerated", L"reportName", reportNamePattern,
                                             L"_report_", MakeGeneratedEvent};

template <class Document>
void PostDocument(const DocumentKind<Document>& kind, const DocumentArguments& document,
                  const ContextArguments& context) {
    const Arguments arguments{Required{L"orgName", document.orgName, orgNamePattern},
                              Required{L"codeName", document.codeName, codeNamePattern},
                              Required{kind.argName, document.name, kind.namePattern},
                              Required{L"version", document.version, schemaVersionPattern},
                              Traced{L"details", document.details},
                              context.Rows()};
    RunExport(kind.exportName, arguments, [&](const Call&) {
        const auto details = Common::InRecordMemory([&] {
            return Document(L"x-" + document.orgName + L"_" + document.codeName + kind.monikerWord +
                                document.name + L"/" + document.version,
                            document.details);
        });
        PostEvent([&] {
            return kind.makeEvent(details, MakeEventContext(context.localContext, context.globalContext));
        });
    });
}

} // namespace

void PostForm(const DocumentArguments& form, const ContextArguments& context) {
    PostDocument(Form, form, context);
}

void PostReport(const DocumentArguments& report, const ContextArguments& context) {
    PostDocument(Report, report, context);
}

} // namespace Zuvan::Lumeq::API
