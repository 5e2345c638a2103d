#include "LumeqC/OpenTasks.h"

#include "LumeqC/Locks.h"

namespace Zuvan::Lumeq {

namespace {

struct Entry {
    lumeq_task number;
    TaskKind kind;
    API::TaskHandle handle; // null while it is being begun or completed
    Entry* next;
};

// A list, since few tasks are open at a time; without a destructor, since a call may come while the process
// ends.
constinit SlimLock tasksLock;
constinit Entry* tasks LUMEQ_GUARDED_BY(tasksLock) = nullptr;
constinit lumeq_task lastNumber LUMEQ_GUARDED_BY(tasksLock) = 0;

/// The link that leads to the entry, or the last one.
Entry** Find(lumeq_task number) noexcept LUMEQ_REQUIRES(tasksLock) {
    Entry** link = &tasks;
    while (*link != nullptr && (*link)->number != number)
        link = &(*link)->next;
    return link;
}

/// Null removes the entry.
void SetHandle(lumeq_task number, API::TaskHandle handle) noexcept LUMEQ_REQUIRES(tasksLock) {
    Entry** const link = Find(number);
    if (*link == nullptr)
        return;
    if (handle != nullptr) {
        (*link)->handle = handle;
        return;
    }
    Entry* const ended = *link;
    *link = ended->next;
    delete ended;
}

} // namespace

NewTask::NewTask(TaskKind kind) {
    Entry* const entry = new Entry{0, kind, nullptr, nullptr};
    const LockedScope scope(tasksLock);
    entry->number = _number = ++lastNumber;
    entry->next = std::exchange(tasks, entry);
}

void NewTask::Opened(API::TaskHandle handle) noexcept {
    const LockedScope scope(tasksLock);
    SetHandle(std::exchange(_number, 0), handle);
}

ClaimedTask::ClaimedTask(lumeq_task number) noexcept : _number(number) {
    const LockedScope scope(tasksLock);
    if (Entry* const entry = *Find(number)) {
        _handle = std::exchange(entry->handle, nullptr);
        _kind = entry->kind;
    }
    // What another call has claimed is that call's to put back.
    if (_handle == nullptr)
        _number = 0;
}

ClaimedTask::~ClaimedTask() {
    const LockedScope scope(tasksLock);
    SetHandle(_number, _handle);
}

bool IsTaskOpen(lumeq_task number) noexcept {
    const LockedScope scope(tasksLock);
    const Entry* const entry = *Find(number);
    return entry != nullptr && entry->handle != nullptr;
}

} // namespace Zuvan::Lumeq
