#include "LumeqApi/TaskEvents.h"

#include "LumeqLib/Extra/Eventing/EventContext.h"

namespace Zuvan::Lumeq::API {

TaskHandle InitiateTask(const ExportName& name, const StringDictionary* localContext,
                        const wchar_t* globalContext, TaskFactory makeTask) {
    return RunExport(name, [&](Call& call) -> TaskHandle {
        call.Trace(L"localContext: %s, globalContext: %s", localContext, globalContext);
        call.Optional(globalContext, L"globalContext", contextPattern);
        if (call.Failed())
            return nullptr;
        auto task = makeTask(Extra::Eventing::MakeEventContext(localContext, globalContext));
        const Extra::Eventing::EventingEvent event = task->Initiated();
        LumeqShim::PostEventXX(&event);
        return reinterpret_cast<TaskHandle>(task.release()); // the host's from here on
    });
}

void CheckPages(Call& call, std::int32_t pages) {
    if (pages < 0)
        call.Reject(L"invalid pages arg: " + std::to_wstring(pages));
}

} // namespace Zuvan::Lumeq::API
