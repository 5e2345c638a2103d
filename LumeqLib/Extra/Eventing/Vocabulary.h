// The words of the schema, built when the library loads.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace Actor {
inline const std::wstring User = L"user";
inline const std::wstring App = L"app";
inline const std::wstring Self = L"self";
} // namespace Actor

namespace Action {
inline const std::wstring Checked = L"checked";
inline const std::wstring Unchecked = L"unchecked";
inline const std::wstring Clicked = L"clicked";
inline const std::wstring Closed = L"closed";
inline const std::wstring Submitted = L"submitted";
inline const std::wstring Displayed = L"displayed";
inline const std::wstring Generated = L"generated";
inline const std::wstring Launched = L"launched";
inline const std::wstring Initiated = L"initiated";
inline const std::wstring Completed = L"completed";
} // namespace Action

namespace Object {
inline const std::wstring Ad = L"ad";
inline const std::wstring Button = L"button";
inline const std::wstring Checkbox = L"checkbox";
inline const std::wstring Hyperlink = L"hyperlink";
inline const std::wstring Screen = L"screen";
inline const std::wstring Tile = L"tile";
inline const std::wstring Url = L"url";
inline const std::wstring Form = L"form";
inline const std::wstring Report = L"report";
inline const std::wstring Task = L"task";
/// No event of this library has it: receivers derive sessions from the records.
inline const std::wstring Session = L"session";
} // namespace Object

namespace Key {
inline const std::wstring Schema = L"schema";
inline const std::wstring Actor = L"app_event_actor";
inline const std::wstring Action = L"app_event_action";
inline const std::wstring Object = L"app_event_object";
inline const std::wstring ObjectLabel = L"app_event_object_label";
inline const std::wstring Context = L"app_event_context";
inline const std::wstring Details = L"app_event_details";

inline const std::wstring ContextGlobal = L"context_global";
inline const std::wstring ContextLocal = L"context_local";
inline const std::wstring DeviceModelName = L"_dev_modelname";
inline const std::wstring TaskGuid = L"_app_event_task_guid";

inline const std::wstring TaskResult = L"task_result";
inline const std::wstring TaskDuration = L"task_duration";

inline const std::wstring Moniker = L"moniker";

/// Never written here: receivers add them.
inline const std::wstring SessionTime = L"app_event_session_time";
inline const std::wstring SubsessionLabel = L"app_event_subsession_label";
inline const std::wstring SubsessionSequenceNumber = L"app_event_subsession_seqnum";
} // namespace Key

namespace Schema {
inline const std::wstring EventInfo = L"app_eventinfo/2.0.1";
inline const std::wstring EventContext = L"app_event_context/1.0.0";
} // namespace Schema

} // namespace Zuvan::Lumeq::Extra::Eventing
