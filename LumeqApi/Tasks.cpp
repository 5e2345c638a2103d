#include "LumeqApi/Tasks.h"

#include "Common/Format.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqShim/LumeqNativeShim.h"

namespace Zuvan::Lumeq::API {

using namespace Extra::Eventing;

TaskHandle InitiateTask(const ExportName& name, TaskFactory makeTask, const ContextArguments& context) {
    return RunExport(name, context.Rows(), [&](const Call&) {
        auto task = makeTask(MakeEventContext(context.localContext, context.globalContext));
        const EventingEvent event = task->Initiated();
        LumeqShim::PostEventXX(&event);
        return reinterpret_cast<TaskHandle>(task.release()); // the host owns it until it is completed
    });
}

void OpenHandle::TraceTo(std::wstring& line) const {
    constexpr std::size_t Longest = 32;
    AppendToTrace(line, L"taskHandle", Common::FormatBounded(Longest, L"0x%p", *taskHandle).text);
}

void EndTask(TaskHandle& taskHandle, const std::wstring& taskResult, const EventDetails& details) {
    EventingTask* const task = reinterpret_cast<EventingTask*>(taskHandle);
    const CompletionEvent event = task->Completed(taskResult, &details);
    LumeqShim::PostEventXX(&event);
    delete task;
    taskHandle = nullptr;
}

} // namespace Zuvan::Lumeq::API
