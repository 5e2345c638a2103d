#include "LumeqLib/Extra/Eventing/EventingTask.h"

#include "Common/CompiledPattern.h"
#include "Common/Exceptions.h"
#include "LumeqLib/Extra/Eventing/EventContext.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

constinit const Common::Pattern completedResultPattern =
    Common::CompiledPattern<L"^(success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?))$">;

EventingTask::EventingTask(const std::wstring& object, const std::wstring& objectLabel, Dictionary context)
    : _context(std::move(context)), _guid(NewTaskGuid()), _objectLabel(objectLabel), _object(object) {
    SetLocalContextValue(_context, Key::TaskGuid, TaskGuidText(RenderTaskGuid(_guid)));
}

EventingTask::~EventingTask() = default;

EventingEvent EventingTask::Initiated(EpochClock clock) {
    EventingEvent event(Actor::Self, Action::Initiated, _object, _objectLabel, _context, nullptr, clock);
    _startTime = event.Timestamp();
    return event;
}

void EventingTask::RequireResult(const std::wstring& taskResult) const {
    if (!completedResultPattern.Matches(taskResult))
        throw Common::ArgumentException(L"taskResult",
                                        L"Task result is not formatted correctly. Must be of form "
                                        L"success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?)");
}

CompletionEvent EventingTask::Completed(const std::wstring& taskResult, const EventDetails* details,
                                        EpochClock clock) const {
    RequireResult(taskResult);
    return CompletionEvent(Action::Completed, _object, _objectLabel, taskResult, _startTime, _context,
                           details, clock);
}

DeviceConfigTask::DeviceConfigTask(const Dictionary& context)
    : EventingTask(Object::Task, L"task_device_config", context) {}

DeviceConnectTask::DeviceConnectTask(const Dictionary& context)
    : EventingTask(Object::Task, L"task_device_connect", context) {}

FileSendToTask::FileSendToTask(const Dictionary& context)
    : EventingTask(Object::Task, L"task_file_sendto", context) {}

PrintBasicTask::PrintBasicTask(const Dictionary& context)
    : EventingTask(Object::Task, L"task_print_basic", context) {}

ScanAcquireTask::ScanAcquireTask(const Dictionary& context)
    : EventingTask(Object::Task, L"task_scan_acquire", context) {}

SwInstallTask::SwInstallTask(const Dictionary& context)
    : EventingTask(Object::Task, L"task_sw_install", context) {}

std::unique_ptr<EventingTask> MakeDeviceConfigTask(const Dictionary& context) {
    return std::make_unique<DeviceConfigTask>(context);
}

std::unique_ptr<EventingTask> MakeDeviceConnectTask(const Dictionary& context) {
    return std::make_unique<DeviceConnectTask>(context);
}

std::unique_ptr<EventingTask> MakeFileSendToTask(const Dictionary& context) {
    return std::make_unique<FileSendToTask>(context);
}

std::unique_ptr<EventingTask> MakePrintBasicTask(const Dictionary& context) {
    return std::make_unique<PrintBasicTask>(context);
}

std::unique_ptr<EventingTask> MakeScanAcquireTask(const Dictionary& context) {
    return std::make_unique<ScanAcquireTask>(context);
}

std::unique_ptr<EventingTask> MakeSwInstallTask(const Dictionary& context) {
    return std::make_unique<SwInstallTask>(context);
}

} // namespace Zuvan::Lumeq::Extra::Eventing
