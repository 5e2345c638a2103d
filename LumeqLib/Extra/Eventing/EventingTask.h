// A task: the state between the call that begins it and the call that completes it.
#pragma once

#include "Common/Pattern.h"
#include "LumeqLib/Extra/Eventing/EpochMilliseconds.h"
#include "LumeqLib/Extra/Eventing/EventDetails.h"
#include "LumeqLib/Extra/Eventing/TaskGuid.h"

#include <Lumeq/LumeqRecords.h>

#include <memory>
#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// The results that `Completed` takes. Stricter than the exports' pattern: a name after "error_" needs two
/// characters. After a refusal the task stays open, and the host can complete it with another result.
extern const Common::Pattern completedResultPattern;

/// Both events of a task carry the same `_app_event_task_guid` in their local context. It replaces a value of
/// that name from the host. Not synchronised: one thread at a time.
class EventingTask {
public:
    EventingTask(const std::wstring& object, const std::wstring& objectLabel, Dictionary context);
    virtual ~EventingTask();
    EventingTask(const EventingTask&) = delete;
    EventingTask& operator=(const EventingTask&) = delete;

    /// The first event. The task's duration counts from its time.
    EventingEvent Initiated(EpochClock clock = EpochMilliseconds);

    /// Throws ArgumentException for a malformed result.
    void RequireResult(const std::wstring& taskResult) const;

    /// The last event; `details` may be null. Throws what RequireResult throws. Changes nothing, so it
    /// can be called again after a failure.
    CompletionEvent Completed(const std::wstring& taskResult, const EventDetails* details,
                              EpochClock clock = EpochMilliseconds) const;

private:
    Dictionary _context;
    std::uint64_t _startTime = InvalidTime;
    TaskGuid _guid;
    std::wstring _objectLabel;
    std::wstring _object;
};

class DeviceConfigTask : public EventingTask {
public:
    explicit DeviceConfigTask(const Dictionary& context);
};

class DeviceConnectTask : public EventingTask {
public:
    explicit DeviceConnectTask(const Dictionary& context);
};

class FileSendToTask : public EventingTask {
public:
    explicit FileSendToTask(const Dictionary& context);
};

class PrintBasicTask : public EventingTask {
public:
    explicit PrintBasicTask(const Dictionary& context);
};

class ScanAcquireTask : public EventingTask {
public:
    explicit ScanAcquireTask(const Dictionary& context);
};

class SwInstallTask : public EventingTask {
public:
    explicit SwInstallTask(const Dictionary& context);
};

std::unique_ptr<EventingTask> MakeDeviceConfigTask(const Dictionary& context);
std::unique_ptr<EventingTask> MakeDeviceConnectTask(const Dictionary& context);
std::unique_ptr<EventingTask> MakeFileSendToTask(const Dictionary& context);
std::unique_ptr<EventingTask> MakePrintBasicTask(const Dictionary& context);
std::unique_ptr<EventingTask> MakeScanAcquireTask(const Dictionary& context);
std::unique_ptr<EventingTask> MakeSwInstallTask(const Dictionary& context);

} // namespace Zuvan::Lumeq::Extra::Eventing
