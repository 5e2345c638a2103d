// The tasks that the host has begun and not completed, by the number that it knows them under.
//
// A host holds numbers and not addresses, so that it may complete a task twice, from two threads, or before
// the worker thread has begun it.
#pragma once

#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq.h>

#include <cstdint>
#include <utility>

namespace Zuvan::Lumeq {

enum class TaskKind { ScanAcquire, PrintBasic, FileSendTo, DeviceConnect, DeviceConfig, SoftwareInstall };

/// A number that is taken and whose task is still to be begun. Ends with it, unless the task is then open.
class NewTask {
public:
    /// Throws std::bad_alloc.
    explicit NewTask(TaskKind kind);
    NewTask(NewTask&& other) noexcept : _number(std::exchange(other._number, 0)) {}
    NewTask& operator=(NewTask&&) = delete;
    ~NewTask() { Opened(nullptr); }

    lumeq_task Number() const noexcept { return _number; }

    /// Null: it could not be begun. The second call does nothing.
    void Opened(API::TaskHandle handle) noexcept;

private:
    lumeq_task _number;
};

/// Holds a task for the call that is to complete it, so that a second one finds none. Puts it back at its
/// end, if it is still open then.
class ClaimedTask {
public:
    explicit ClaimedTask(lumeq_task number) noexcept;
    ~ClaimedTask();
    ClaimedTask(const ClaimedTask&) = delete;
    ClaimedTask& operator=(const ClaimedTask&) = delete;

    /// The variable that a Completed export takes; null where no such task is open.
    API::TaskHandle* Handle() noexcept { return &_handle; }
    bool IsOpen() const noexcept { return _handle != nullptr; }
    TaskKind Kind() const noexcept { return _kind; }

private:
    lumeq_task _number;
    API::TaskHandle _handle = nullptr;
    TaskKind _kind{};
};

bool IsTaskOpen(lumeq_task number) noexcept;

} // namespace Zuvan::Lumeq
