// The six pairs of task exports: one Initiated call, then any number of Completed calls, of which all but the
// last may be refused.
#include "fuzz/native/Machine.h"
#include "fuzz/support/ExportModel.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/Require.h"
#include "tests/LumeqLib/Extra/Eventing/ExpectedEnumerations.h"

#include <Lumeq/LumeqApi.h>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

/// The details of one completion, and the exception on the way to them.
class ExpectedDetails {
public:
    explicit ExpectedDetails(const wchar_t* schema) { _fields[L"schema"] = Model(schema); }

    void Text(const wchar_t* key, const std::wstring& text) { _fields[key] = Model(text); }
    void Number(const wchar_t* key, std::int32_t number) { Text(key, std::to_wstring(number)); }
    void Record(const wchar_t* key, Model::Fields fields) { _fields[key] = Model(std::move(fields)); }

    /// In the order in which the export converts them; the first undefined value ends the conversion.
    template <class Row, std::size_t Count>
    void Enumerated(const wchar_t* key, const Row (&rows)[Count], const Expected::ExpectedTexts& texts,
                    std::int32_t value) {
        for (const Row& row : rows)
            if (row.apiValue == value)
                return Text(key, row.text);
        if (!_failure)
            _failure = texts.thrownStem + std::to_wstring(value) + L"]";
    }

    const std::optional<std::wstring>& Failure() const { return _failure; }
    const Model::Fields& Fields() const { return _fields; }

private:
    Model::Fields _fields;
    std::optional<std::wstring> _failure;
};

/// One completion with the host's arguments.
struct End {
    std::wstring result;
    std::int32_t numbers[8] = {};
    std::int32_t pages = 0;
    std::wstring name;
    std::wstring version;
    API::ScanFeatureMap features;

    static End Good() {
        End end;
        end.result = L"success";
        end.name = L"name";
        end.version = L"1.2.3";
        return end;
    }

    explicit End(Input& input) : result(ReadText(input)) {
        for (std::int32_t& number : numbers)
            number = static_cast<std::int32_t>(input.Choice(16)) - 1;
        pages = static_cast<std::int32_t>(input.Number());
        name = ReadText(input);
        version = ReadText(input);
        for (const auto& [key, value] : input.Fields())
            features[key] = value == L"on";
    }

    template <class Enumeration>
    Enumeration As(std::size_t i) const {
        return static_cast<Enumeration>(numbers[i]);
    }

private:
    End() = default;
};

struct TaskKind {
    const wchar_t* initiatedName;
    decltype(API::ScanAcquireInitiated)* initiated;
    const wchar_t* label;
    const wchar_t* completedName;
    void (*complete)(API::TaskHandle*, const End&);
    /// The checks that only some pairs have.
    void (*expectChecks)(ExpectedCall&, const End&);
    ExpectedDetails (*details)(const End&);
};

void ExpectPages(ExpectedCall& call, const End& end) {
    if (end.pages < 0)
        call.Invalid(L"invalid pages arg: " + std::to_wstring(end.pages));
}

void CompleteScan(API::TaskHandle* task, const End& end) {
    API::ScanAcquireCompleted(task, end.result, end.As<API::Scan::ShortcutType>(0),
                              end.As<API::Scan::ShortcutVarianceType>(1), end.As<API::Scan::ItemType>(2),
                              end.As<API::Scan::ResolutionType>(3), end.As<API::Scan::ColorModeType>(4),
                              end.As<API::Scan::PageSizeType>(5), end.As<API::Scan::SourceType>(6),
                              end.As<API::Scan::MimeType>(7), end.features, end.pages);
}

ExpectedDetails ScanDetails(const End& end) {
    using namespace Expected;
    ExpectedDetails details(L"app_event_task_scan_acquire/1.0.0");
    details.Enumerated(L"scan_acquire_mimetype", ScanMimeTypeRows, ScanMimeTypeTexts, end.numbers[7]);
    details.Enumerated(L"scan_acquire_source", ScanSourceTypeRows, ScanSourceTypeTexts, end.numbers[6]);
    details.Enumerated(L"scan_acquire_pagesize", ScanPageSizeTypeRows, ScanPageSizeTypeTexts, end.numbers[5]);
    details.Enumerated(L"scan_acquire_colormode", ScanColorModeTypeRows, ScanColorModeTypeTexts,
                       end.numbers[4]);
    details.Enumerated(L"scan_acquire_resolution", ScanResolutionTypeRows, ScanResolutionTypeTexts,
                       end.numbers[3]);
    details.Enumerated(L"scan_acquire_itemtype", ScanItemTypeRows, ScanItemTypeTexts, end.numbers[2]);
    details.Enumerated(L"scan_acquire_shortcut_variance", ScanShortcutVarianceTypeRows,
                       ScanShortcutVarianceTypeTexts, end.numbers[1]);
    details.Enumerated(L"scan_acquire_shortcut", ScanShortcutTypeRows, ScanShortcutTypeTexts, end.numbers[0]);
    Model::Fields features;
    for (const auto& [feature, isOn] : end.features)
        features[feature] = Model(isOn ? L"true" : L"false");
    details.Record(L"scan_acquire_features", features);
    details.Number(L"scan_acquire_pages", end.pages);
    return details;
}

void CompletePrint(API::TaskHandle* task, const End& end) {
    API::PrintBasicCompleted(task, end.result, end.As<API::Print::SubsystemType>(0),
                             end.As<API::Print::ItemType>(1), end.As<API::Print::MimeType>(2),
                             end.As<API::Print::PageSizeType>(3), end.name, end.pages);
}

void ExpectPrintChecks(ExpectedCall& call, const End& end) {
    call.Required(Kind::PaperSize, L"paperSize", end.name);
    ExpectPages(call, end);
}

ExpectedDetails PrintDetails(const End& end) {
    using namespace Expected;
    ExpectedDetails details(L"app_event_task_print_basic/1.0.0");
    details.Enumerated(L"print_basic_size", PrintPageSizeTypeRows, PrintPageSizeTypeTexts, end.numbers[3]);
    details.Enumerated(L"print_basic_mimetype", PrintMimeTypeRows, PrintMimeTypeTexts, end.numbers[2]);
    details.Enumerated(L"print_basic_type", PrintItemTypeRows, PrintItemTypeTexts, end.numbers[1]);
    details.Enumerated(L"print_basic_subsystem", PrintSubsystemTypeRows, PrintSubsystemTypeTexts,
                       end.numbers[0]);
    details.Text(L"print_basic_papersize", end.name);
    details.Number(L"print_basic_pages", end.pages);
    return details;
}

void CompleteSend(API::TaskHandle* task, const End& end) {
    API::FileSendToCompleted(task, end.result, end.As<API::File::ShortcutType>(0),
                             end.As<API::File::ShortcutVarianceType>(1), end.As<API::File::MimeType>(2),
                             end.As<API::File::DestinationType>(3), end.pages);
}

ExpectedDetails SendDetails(const End& end) {
    using namespace Expected;
    ExpectedDetails details(L"app_event_task_file_sendto/1.0.0");
    details.Enumerated(L"scan_sendto_destination", FileDestinationTypeRows, FileDestinationTypeTexts,
                       end.numbers[3]);
    details.Enumerated(L"scan_sendto_mimetype", FileMimeTypeRows, FileMimeTypeTexts, end.numbers[2]);
    details.Enumerated(L"scan_sendto_shortcut_variance", FileShortcutVarianceTypeRows,
                       FileShortcutVarianceTypeTexts, end.numbers[1]);
    details.Enumerated(L"scan_sendto_shortcut", FileShortcutTypeRows, FileShortcutTypeTexts, end.numbers[0]);
    details.Number(L"scan_sendto_pages", end.pages);
    return details;
}

void CompleteConnect(API::TaskHandle* task, const End& end) {
    API::DeviceConnectCompleted(task, end.result, end.As<API::ConnectionScenarioType>(0),
                                end.As<API::ConnectionMethodType>(1));
}

ExpectedDetails ConnectDetails(const End& end) {
    using namespace Expected;
    ExpectedDetails details(L"app_event_task_device_connect/1.0.0");
    details.Enumerated(L"connect_method", ConnectionMethodTypeRows, ConnectionMethodTypeTexts,
                       end.numbers[1]);
    details.Enumerated(L"connect_scenario", ConnectionScenarioTypeRows, ConnectionScenarioTypeTexts,
                       end.numbers[0]);
    return details;
}

void CompleteConfig(API::TaskHandle* task, const End& end) {
    API::DeviceConfigCompleted(task, end.result, end.As<API::ConfigurationSettingType>(0));
}

ExpectedDetails ConfigDetails(const End& end) {
    using namespace Expected;
    ExpectedDetails details(L"app_event_task_device_config/1.0.0");
    details.Enumerated(L"config_setting", ConfigurationSettingTypeRows, ConfigurationSettingTypeTexts,
                       end.numbers[0]);
    return details;
}

void CompleteInstall(API::TaskHandle* task, const End& end) {
    API::SoftwareInstallCompleted(task, end.result, end.As<API::InstallType>(0), end.name, end.version);
}

void ExpectInstallChecks(ExpectedCall& call, const End& end) {
    call.Required(Kind::InstallName, L"name", end.name);
    call.Required(Kind::InstallVersion, L"version", end.version);
}

ExpectedDetails InstallDetails(const End& end) {
    using namespace Expected;
    ExpectedDetails details(L"app_event_task_sw_install/1.0.0");
    details.Enumerated(L"install_type", InstallTypeRows, InstallTypeTexts, end.numbers[0]);
    details.Text(L"install_name", end.name);
    details.Text(L"install_version", end.version);
    return details;
}

void ExpectNothing(ExpectedCall&, const End&) {}

const TaskKind Kinds[] = {
    {L"ScanAcquireInitiated", API::ScanAcquireInitiated, L"task_scan_acquire", L"ScanAcquireCompleted",
     CompleteScan, ExpectPages, ScanDetails},
    {L"PrintBasicInitiated", API::PrintBasicInitiated, L"task_print_basic", L"PrintBasicCompleted",
     CompletePrint, ExpectPrintChecks, PrintDetails},
    {L"FileSendToInitiated", API::FileSendToInitiated, L"task_file_sendto", L"FileSendToCompleted",
     CompleteSend, ExpectPages, SendDetails},
    {L"DeviceConnectInitiated", API::DeviceConnectInitiated, L"task_device_connect",
     L"DeviceConnectCompleted", CompleteConnect, ExpectNothing, ConnectDetails},
    {L"DeviceConfigInitiated", API::DeviceConfigInitiated, L"task_device_config", L"DeviceConfigCompleted",
     CompleteConfig, ExpectNothing, ConfigDetails},
    {L"SoftwareInstallInitiated", API::SoftwareInstallInitiated, L"task_sw_install",
     L"SoftwareInstallCompleted", CompleteInstall, ExpectInstallChecks, InstallDetails},
};

/// The context that both events of a task carry.
Model::Fields TaskContext(const ContextArguments& arguments) {
    Model::Fields context = arguments.Record();
    Model& local = context[L"context_local"];
    if (local.type == Model::ValueType::Null)
        local = Model(Model::Fields());
    local.fields[L"_app_event_task_guid"] =
        Model(TheMachine().uuidTextFails ? L"Error!" : L"76543210-0000-0000-0000-000000000000");
    return context;
}

void RequireEvent(const Model::Fields& record) {
    const Machine& machine = TheMachine();
    Require(machine.events.size() == 1, "a good call is one event");
    Require(machine.events[0].record == Model(record), "the record contains the host's arguments");
    Require(machine.events[0].timestamp == EventTime(machine.utcMilliseconds), "the event has its time");
}

std::wstring Duration(std::int64_t start, std::int64_t end) {
    const bool known =
        EventTime(start) != Extra::Eventing::InvalidTime && EventTime(end) != Extra::Eventing::InvalidTime;
    return known ? std::to_wstring(end - start) : L"-1";
}

/// Clears the results of earlier calls and sets the clock for the next one.
void NextCall(std::int64_t utcMilliseconds) {
    Machine& machine = TheMachine();
    machine.log.clear();
    machine.events.clear();
    machine.utcMilliseconds = utcMilliseconds;
}

class OpenTask {
public:
    OpenTask(const TaskKind& kind, Input& input) : _kind(kind), _arguments(input) {
        _context = TaskContext(_arguments);
        _start = TheMachine().utcMilliseconds;
    }

    /// False if the Initiated call was refused.
    bool Begin() {
        ExpectedCall call(_kind.initiatedName);
        call.Optional(Kind::Context, L"globalContext", _arguments.global);
        _handle = _kind.initiated(_arguments.Local(), _arguments.Global());
        call.RequireErrors();
        Require((_handle == nullptr) == call.Failed(), "an accepted Initiated call returns a handle");
        if (_handle)
            RequireEvent(EventRecord(L"self", L"initiated", L"task", _kind.label, _context, {}));
        else
            Require(TheMachine().events.empty(), "a refused Initiated call posts no event");
        return _handle != nullptr;
    }

    void Complete(const End& end, std::int64_t utcMilliseconds) {
        NextCall(utcMilliseconds);
        const bool wasOpen = _handle != nullptr;
        const ExpectedDetails details = _kind.details(end);
        const ExpectedCall call = Expect(end, details);
        _kind.complete(&_handle, end);
        call.RequireErrors();
        Require(wasOpen == (_handle != nullptr) || !call.Failed(),
                "a refused completion leaves the handle unchanged");
        if (call.Failed()) {
            Require(TheMachine().events.empty(), "a refused completion posts no event");
            return;
        }
        Require(_handle == nullptr, "an accepted completion clears the handle");
        Model::Fields fields = details.Fields();
        fields[L"task_result"] = Model(end.result);
        fields[L"task_duration"] = Model(Duration(_start, utcMilliseconds));
        RequireEvent(EventRecord(L"self", L"completed", L"task", _kind.label, _context, fields));
    }

    bool IsOpen() const { return _handle != nullptr; }

private:
    ExpectedCall Expect(const End& end, const ExpectedDetails& details) const {
        ExpectedCall call(_kind.completedName);
        if (!_handle)
            call.Invalid(L"null taskHandle arg");
        call.Required(Kind::TaskResult, L"taskResult", end.result);
        _kind.expectChecks(call, end);
        if (!call.Failed() && details.Failure())
            call.Exception(*details.Failure());
        else if (!call.Failed() && !PlainlyMatches(Kind::ClassTaskResult, end.result))
            call.Exception(L"Task result is not formatted correctly. Must be of form "
                           L"success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?)");
        return call;
    }

    const TaskKind& _kind;
    ContextArguments _arguments;
    Model::Fields _context;
    std::int64_t _start = 0;
    API::TaskHandle _handle = nullptr;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const TaskKind& kind = Kinds[input.Choice(std::size(Kinds))];
    Machine& machine = NewMachine();
    machine.uuidTextFails = input.Choice(2) == 1;
    machine.utcMilliseconds = input.Number();

    OpenTask task(kind, input);
    task.Begin();
    for (int ends = 0; ends < 3 && !input.IsAtEnd(); ++ends) {
        const End end(input);
        task.Complete(end, input.Number());
    }
    if (task.IsOpen())
        task.Complete(End::Good(), machine.utcMilliseconds);
    Require(!task.IsOpen(), "a task can be completed after a refused completion");
    return 0;
}
