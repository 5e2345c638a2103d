#include "LumeqLib/Extra/Eventing/EventContext.h"

#include "Common/TrackingGate.h"
#include "LumeqLib/Extra/Eventing/Variant.h"
#include "LumeqLib/Extra/Eventing/Vocabulary.h"

#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

bool HasEntries(const Dictionary& context, const std::wstring& section) {
    const auto found = context.find(section);
    return found != context.end() && found->second.Type() != Variant::ValueType::Null &&
           !found->second.AsDictionary().empty();
}

bool IsEmptyText(const wchar_t* text) { return !text || !*text; }

} // namespace

Dictionary MakeGlobalContext() { return MakeGlobalContext(Common::GlobalContext().c_str()); }

Dictionary MakeGlobalContext(const wchar_t* modelName) {
    Dictionary global;
    // The key exists without a model name too: receivers count on it.
    Variant& field = global[Key::DeviceModelName];
    if (!IsEmptyText(modelName))
        field = std::wstring(modelName);
    return global;
}

Dictionary MakeContext(Dictionary global) {
    Dictionary context;
    context[Key::Schema] = Schema::EventContext;
    context[Key::ContextGlobal] = std::move(global);
    context[Key::ContextLocal];
    return context;
}

Dictionary MakeContext(Dictionary global, Dictionary local) {
    Dictionary context = MakeContext(std::move(global));
    context[Key::ContextLocal] = std::move(local);
    return context;
}

Dictionary MakeEventContext(const StringDictionary* localContext, const wchar_t* globalContext) {
    Dictionary local;
    if (localContext)
        AddStringDictionary(local, *localContext);
    Dictionary global = IsEmptyText(globalContext) ? MakeGlobalContext() : MakeGlobalContext(globalContext);
    return localContext ? MakeContext(std::move(global), std::move(local)) : MakeContext(std::move(global));
}

bool IsContextEmpty(const Dictionary& context) {
    return !HasEntries(context, Key::ContextGlobal) && !HasEntries(context, Key::ContextLocal);
}

void SetLocalContextValue(Dictionary& context, const std::wstring& key, const std::wstring& value) {
    Variant& local = context[Key::ContextLocal];
    if (local.Type() == Variant::ValueType::Null)
        local = Dictionary();
    local.AsDictionary()[key] = value;
}

} // namespace Zuvan::Lumeq::Extra::Eventing
