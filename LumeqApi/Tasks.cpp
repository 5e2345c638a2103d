#include "LumeqApi/Tasks.h"

#include "Common/Format.h"
#include "LumeqApi/PostEvent.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"

namespace Zuvan::Lumeq::API {

using namespace Extra::Eventing;

namespace {

/// The task copies the context to the heap, because a task can stay open long after its event.
std::unique_ptr<EventingTask> MakeTask(TaskFactory makeTask, const ContextArguments& context) {
    return makeTask(Common::InRecordMemory(
        [&] { return MakeEventContext(context.localContext, context.globalContext); }));
}

} // namespace

TaskHandle InitiateTask(ExportName name, TaskFactory makeTask, const ContextArguments& context) {
    return RunExport(name, context.Rows(), [&](const Call&) {
        auto task = MakeTask(makeTask, context);
        PostEvent([&] { return task->Initiated(); });
        return reinterpret_cast<TaskHandle>(task.release()); // the host owns it until it is completed
    });
}

void OpenHandle::TraceTo(std::wstring& line) const {
    constexpr std::size_t Longest = 32;
    AppendToTrace(line, L"taskHandle", Common::FormatBounded(Longest, L"0x%p", *taskHandle).text);
}

void EndTask(TaskHandle& taskHandle, const std::wstring& taskResult, const EventDetails& details) {
    EventingTask* const task = reinterpret_cast<EventingTask*>(taskHandle);
    task->RequireResult(taskResult);
    PostEvent([&] { return task->Completed(taskResult, &details); });
    delete task;
    taskHandle = nullptr;
}

} // namespace Zuvan::Lumeq::API
