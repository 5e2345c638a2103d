// The six pairs of exports that report a task.
#pragma once

#include "Common/RecordMemory.h"
#include "Common/Text.h"
#include "LumeqApi/Arguments.h"
#include "LumeqLib/Extra/Eventing/EventingTask.h"

#include <cstddef>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

namespace Zuvan::Lumeq::API {

using TaskFactory =
    std::unique_ptr<Extra::Eventing::EventingTask> (*)(const Extra::Eventing::Dictionary& context);

/// The whole of an Initiated export.
TaskHandle InitiateTask(ExportName name, TaskFactory makeTask, const ContextArguments& context);

/// The handle in the host's variable, which must not be null. The address of the variable is not checked.
struct OpenHandle {
    TaskHandle* taskHandle;

    void TraceTo(std::wstring& line) const;
    bool IsAccepted(const Call& call) const {
        return *taskHandle != nullptr || call.Refuse(L"null taskHandle arg");
    }
};

/// Zero is accepted.
struct PageCount {
    std::int32_t pages;

    void TraceTo(std::wstring& line) const { AppendToTrace(line, L"pages", Render(pages)); }
    bool IsAccepted(const Call& call) const {
        return pages >= 0 || call.Refuse(L"invalid pages arg: " + Common::DecimalText(pages));
    }
};

/// What the details of a task take for an argument. Throws ArgumentOutOfRangeException for an undefined
/// value.
template <class Enumeration>
requires std::is_enum_v<Enumeration>
auto RecordOf(const Traced<Enumeration>& row) { return Extra::Eventing::ToRecord(row.value); }
inline ScanFeatureMap RecordOf(const Traced<ScanFeatureMap>& row) { return row.value; }
inline const std::wstring& RecordOf(const Required& row) { return row.value; }
inline std::int32_t RecordOf(const PageCount& row) { return row.pages; }

template <class Details, class... Rows, std::size_t... Ith>
Details MakeDetails(const std::tuple<const Rows&...>& rows, std::index_sequence<Ith...>) {
    constexpr std::size_t Last = sizeof...(Rows) - 1;
    std::tuple<decltype(RecordOf(std::get<Last - Ith>(rows)))...> records{
        RecordOf(std::get<Last - Ith>(rows))...};
    return Details(std::get<Last - Ith>(std::move(records))...);
}

/// Builds the details of a task from the rows of its arguments. Converts the last one first: the log names
/// the first undefined value that is found, and its readers know that order.
template <class Details, class... Rows>
Details MakeDetails(const std::tuple<const Rows&...>& rows) {
    return MakeDetails<Details>(rows, std::index_sequence_for<Rows...>());
}

/// Sends the event of the end, frees the task and clears the host's variable.
void EndTask(TaskHandle& taskHandle, const std::wstring& taskResult,
             const Extra::Eventing::EventDetails& details);

/// The whole of a Completed export. The rows are its arguments after `taskResult`, in the order of the
/// signature and of the constructor of `Details`. A failure leaves the task and the host's variable as they
/// were.
template <class Details, class... Rows>
void CompleteTask(ExportName name, TaskHandle* taskHandle, const std::wstring& taskResult,
                  const Rows&... rows) {
    const Arguments arguments{OpenHandle{taskHandle}, Required{L"taskResult", taskResult, taskResultPattern},
                              rows...};
    RunExport(name, arguments, [&](const Call&) {
        const auto details = Common::InRecordMemory([&] { return MakeDetails<Details>(std::tie(rows...)); });
        EndTask(*taskHandle, taskResult, details);
    });
}

} // namespace Zuvan::Lumeq::API
