// What the six pairs of exports have in common that tell of a task.
#pragma once

#include "LumeqApi/CallFrame.h"
#include "LumeqApi/Patterns.h"
#include "LumeqLib/Extra/Eventing/EventingTask.h"
#include "LumeqShim/LumeqNativeShim.h"

#include <Lumeq/LumeqRecords.h>

#include <memory>
#include <string>

namespace Zuvan::Lumeq::API {

using TaskFactory =
    std::unique_ptr<Extra::Eventing::EventingTask> (*)(const Extra::Eventing::Dictionary& context);

/// The whole of an Initiated export.
TaskHandle InitiateTask(const ExportName& name, const StringDictionary* localContext,
                        const wchar_t* globalContext, TaskFactory makeTask);

/// Zero is accepted.
void CheckPages(Call& call, std::int32_t pages);

inline Extra::Eventing::EventingTask* FromHandle(TaskHandle handle) {
    return reinterpret_cast<Extra::Eventing::EventingTask*>(handle);
}

/// The whole of a Completed export. `trace` logs the arguments and `check` adds the export's own checks, both
/// taking the Call&; `makeDetails` converts the arguments and builds the details. A failure leaves the task
/// and the host's variable as they were.
template <class Trace, class Check, class MakeDetails>
void CompleteTask(const ExportName& name, TaskHandle* taskHandle, const std::wstring& taskResult, Trace trace,
                  Check check, MakeDetails makeDetails) {
    RunExport(name, [&](Call& call) {
        trace(call);
        if (*taskHandle == nullptr)
            call.Reject(L"null taskHandle arg");
        call.Required(taskResult, L"taskResult", taskResultPattern);
        check(call);
        if (call.Failed())
            return;
        const auto details = makeDetails();
        Extra::Eventing::EventingTask* task = FromHandle(*taskHandle);
        const Extra::Eventing::CompletionEvent event = task->Completed(taskResult, &details);
        LumeqShim::PostEventXX(&event);
        delete task;
        *taskHandle = nullptr;
    });
}

} // namespace Zuvan::Lumeq::API
