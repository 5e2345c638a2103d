// The context record of an event, `app_event_context/1.0.0`: the device model, and what the host adds.
#pragma once

#include <Lumeq/LumeqRecords.h>

#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// The global section with the process-wide model name, Null if there is none. Under the API lock.
Dictionary MakeGlobalContext();

/// The global section with `modelName`, Null if that is null or empty.
Dictionary MakeGlobalContext(const wchar_t* modelName);

/// The context record with a Null local section.
Dictionary MakeContext(Dictionary global);
Dictionary MakeContext(Dictionary global, Dictionary local);

/// The context record of an exported call; both arguments may be null. A model name of the call wins over the
/// process-wide one. The two sections are never merged. Under the API lock.
Dictionary MakeEventContext(const StringDictionary* localContext, const wchar_t* globalContext);

/// Whether neither section has entries.
bool IsContextEmpty(const Dictionary& context);

/// Sets one text of the local section, which is made if it is absent or Null.
void SetLocalContextValue(Dictionary& context, const std::wstring& key, const std::wstring& value);

} // namespace Zuvan::Lumeq::Extra::Eventing
