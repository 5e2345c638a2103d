// A host calls an export inside another export on the same thread.
#include "faults/ExportRun.h"

#include <Lumeq/LumeqRecords.h>

#include <cstring>
#include <gmock/gmock.h>
#include <system_error>
#include <vector>

namespace Zuvan::Lumeq::Testing {

namespace {

using testing::Each;
using testing::IsEmpty;
using testing::Not;

const FailingLibrary* library = nullptr;
/// Error value of each nested call, 0 if it returned. Only the value is comparable, because each module has
/// its own error categories.
std::vector<int> failures;

void CallMeanwhile() {
    try {
        library->Find<decltype(API::FlushEx)>("FlushEx")(0);
        failures.push_back(0);
    } catch (const std::system_error& failure) {
        failures.push_back(failure.code().value());
    }
}

/// Like COM, which dispatches to window procedures and message hooks while it waits.
HRESULT STDAPICALLTYPE FindClassAndDispatch(REFCLSID classId, DWORD context, void* server, REFIID iid,
                                            void** factory) {
    CallMeanwhile();
    return CoGetClassObject(classId, context, server, iid, factory);
}

using PostEvent = void(const Extra::Eventing::EventingEvent& event, void* second, void* third);
PostEvent* realPostEvent = nullptr;

void PostEventAndCallBack(const Extra::Eventing::EventingEvent& event, void* second, void* third) {
    CallMeanwhile();
    realPostEvent(event, second, third);
}

FARPROC STDAPICALLTYPE FindPostEventThatCallsBack(HMODULE module, const char* name) {
    const FARPROC found = GetProcAddress(module, name);
    if (std::strcmp(name, "PostEventInternal") != 0)
        return found;
    realPostEvent = reinterpret_cast<PostEvent*>(reinterpret_cast<void*>(found));
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&PostEventAndCallBack));
}

class NestedCall : public ExportTest {
protected:
    template <class Function>
    void CallWhile(const char* exportName, Road road, const char* system, const char* function,
                   Function* replacement) {
        const ExportCase& exported = FindExportCase(exportName);
        ExportRun run(_machine, exported, road, "");
        library = &run.Library();
        run.Prepare();
        {
            const ImportedFunction<Function> replaced(run.Library().Module(), system, function, replacement);
            run.Call(exported.accepted);
        }
        EXPECT_THAT(failures, Not(IsEmpty()));
        EXPECT_THAT(failures, Each(static_cast<int>(std::errc::resource_deadlock_would_occur)));
        run.ExpectUndisturbed(exported.accepted);
        run.ExpectNextCallWorks(exported.accepted);
    }
};

} // namespace

TEST_F(NestedCall, OfAMessageHookFailsAndTheOuterCallGoesOn) {
    CallWhile("GetUserOptInEx", Road::Basic, "ole32.dll", "CoGetClassObject", &FindClassAndDispatch);
}

TEST_F(NestedCall, OfTheCompanionFailsAndTheOuterCallGoesOn) {
    CallWhile("ButtonClicked", Road::Managed, "kernel32.dll", "GetProcAddress", &FindPostEventThatCallsBack);
}

} // namespace Zuvan::Lumeq::Testing
