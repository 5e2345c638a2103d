// The companion library reads the records at these offsets.
#include <Lumeq/LumeqRecords.h>

#include <cstddef>

#if defined(__GNUC__)
// Classes with a virtual table do not have standard layout, but the supported toolchains place their members
// as if they had.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
#endif

namespace Zuvan::Lumeq::Extra::Eventing {

struct RecordLayout {
    static_assert(offsetof(Variant, _value) == 0);
    static_assert(offsetof(Variant, _type) == 8);
    static_assert(sizeof(Variant) == 16);

    static_assert(offsetof(EventingEvent, _timestamp) == 8);
    static_assert(offsetof(EventingEvent, _record) == 16);

    static_assert(offsetof(CompletionEvent, _detailsKey) == 80);
    static_assert(offsetof(CompletionEvent, _durationKey) == 112);
    static_assert(offsetof(CompletionEvent, _resultKey) == 144);
};

} // namespace Zuvan::Lumeq::Extra::Eventing

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
