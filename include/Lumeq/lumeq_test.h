// The recording double of Lumeq, for the unit tests of hosts: what the code under test has recorded, and the
// circumstances that it meets.
//
// The double is a Lumeq.dll with the exports of LumeqApi.h, so it serves under LumeqC.dll as well. It checks
// every call and builds every record with the code of the library. It keeps the records in memory and uses
// no registry, no settings, no file, no COM and no network. It is not for shipping: docs/unit-tests.md.
//
// - Texts are UTF-8. A text that a function returns stays valid until lumeq_test_reset, those of
//   lumeq_test_mismatch, lumeq_test_missing_event, lumeq_test_text and lumeq_test_describe until the
//   thread's next call of one of these four.
// - Numbers of events, refusals, operations and lines begin with 0. A number beyond the last returns null.
// - Any thread may call. With the worker thread of LumeqC.dll, first call lumeq_task_is_open(0), which waits
//   for it.
// - No function throws.
#ifndef LUMEQ_LUMEQ_TEST_H
#define LUMEQ_LUMEQ_TEST_H

#include <stddef.h>
#include <stdint.h>

#if !defined(LUMEQ_TEST_API)
#if defined(_WIN32)
#define LUMEQ_TEST_API __declspec(dllimport)
#else
#define LUMEQ_TEST_API
#endif
#endif

#if defined(__cplusplus)
extern "C" {
#endif

/// Forgets what was recorded and restores all circumstances: the clock, the user's choice, the switch, the
/// device model, the subfolder. Call it before each test, while no call of the library runs. A task that is
/// open stays open.
LUMEQ_TEST_API void lumeq_test_reset(void);

// What was recorded.

/// The events, in their order: each event record and each printer that the library would have delivered. As
/// JSON: "operation", then "timestamp" and "record", or "dataType" and "data", as the companion library
/// receives them, then "call", the call of the host as a line of a session.
LUMEQ_TEST_API int32_t lumeq_test_event_count(void);
LUMEQ_TEST_API const char* lumeq_test_event(int32_t number);

/// Everything that was delivered, in its order: the events, and the operations of the session, such as
/// StartupInternal. As JSON of the same kind.
LUMEQ_TEST_API int32_t lumeq_test_operation_count(void);
LUMEQ_TEST_API const char* lumeq_test_operation(int32_t number);

/// The refusals: one for each bad argument, and one for each call that failed for another reason. As JSON:
/// "export", "argument", "value", "refusedBy" ("export" or "event class"), "message" and "advice" in the
/// words of `lumeq lint`, and "call". "argument" is empty, and "message" is the library's own, where the
/// reason is no argument.
LUMEQ_TEST_API int32_t lumeq_test_refusal_count(void);
LUMEQ_TEST_API const char* lumeq_test_refusal(int32_t number);

/// The lines of the library's log, at every level and without times: "ERROR ...". The first one says that
/// this is a double; the debugger channel receives it too.
LUMEQ_TEST_API int32_t lumeq_test_log_count(void);
LUMEQ_TEST_API const char* lumeq_test_log_line(int32_t number);

// The circumstances.

/// The clock of the library stands still. It begins at LUMEQ_TEST_CLOCK and moves only by these two.
/// Milliseconds since 1970-01-01 UTC.
#define LUMEQ_TEST_CLOCK INT64_C(1577836800000)
LUMEQ_TEST_API void lumeq_test_set_clock(int64_t utc_msec);
LUMEQ_TEST_API void lumeq_test_advance_clock(int64_t msec);

/// The n-th task that begins after this call, or after a reset, has the GUID
/// 00000000-0000-0000-0000-... that ends in the hexadecimal number `first` + n - 1. It is 1 after a reset.
LUMEQ_TEST_API void lumeq_test_set_next_guid(uint64_t first);

/// The user's choice. The values are those of enum lumeq_choice in lumeq.h.
enum { LUMEQ_TEST_OPT_IN_UNSET = 1, LUMEQ_TEST_OPT_IN_NO = 2, LUMEQ_TEST_OPT_IN_YES = 3 };
LUMEQ_TEST_API void lumeq_test_set_opt_in(int32_t opt_in);
/// The choice that is stored. During a pause, the one that its end restores.
LUMEQ_TEST_API int32_t lumeq_test_opt_in(void);

/// Whether the code under test has paused tracking and not resumed it.
LUMEQ_TEST_API int32_t lumeq_test_is_paused(void);

/// Not zero: every call returns at once and does nothing, as if the user's registry disabled tracking.
LUMEQ_TEST_API void lumeq_test_disable_tracking(int32_t is_disabled);
LUMEQ_TEST_API int32_t lumeq_test_is_tracking_disabled(void);

/// Makes the next operation fail: what it should have delivered is lost, and the log has a warning.
LUMEQ_TEST_API void lumeq_test_fail_next_delivery(void);

// Matching. A name is that of an argument in LumeqApi.h ("screenName"), of a field of a dictionary
// ("localContext.shop"), of a field of an event ("record.app_event_object_label", "data.dev_biid") or of a
// member of a refusal ("refusal.argument"), or "handle", the name of the task that a call has begun; its end
// has the same name as "taskHandle". The value of a text is the text; of a flag "true" or "false"; of
// a number its digits; of an enumerated value its text in the event ("flatbed") or its digits; of an argument
// that is null or left out, null.

typedef struct lumeq_test_argument {
    const char* name;
    const char* value;
} lumeq_test_argument;

/// Null if `json`, one of the texts above, comes from a call of the export with these arguments; arguments
/// that are not named are not compared. Otherwise a text that says what differs.
LUMEQ_TEST_API const char* lumeq_test_mismatch(const char* json, const char* export_name,
                                               const lumeq_test_argument* arguments, size_t count);

/// Null if any event matches. Otherwise a text of several lines that says what is missing and what there is
/// instead. `arguments` may be null where `count` is zero.
LUMEQ_TEST_API const char* lumeq_test_missing_event(const char* export_name,
                                                    const lumeq_test_argument* arguments, size_t count);

/// One of the texts above in a line to read: "ButtonClicked(screenName: "Home", controlName: "ok")".
LUMEQ_TEST_API const char* lumeq_test_text(const char* json);

/// All events and refusals, one such line for each, for the message of a failed test.
LUMEQ_TEST_API const char* lumeq_test_describe(void);

#if defined(__cplusplus)
}
#endif

/// For C: the text of lumeq_test_missing_event, with names and values in turn.
///
///     const char* missing = LUMEQ_TEST_MISSING("ButtonClicked", {"screenName", "Home"}, {"controlName",
///     "ok"});
#if !defined(__cplusplus)
#define LUMEQ_TEST_MISSING(export_name, ...)                                                                 \
    lumeq_test_missing_event(export_name, (const lumeq_test_argument[]){__VA_ARGS__},                        \
                             sizeof((const lumeq_test_argument[]){__VA_ARGS__}) /                            \
                                 sizeof(lumeq_test_argument))
#endif

#endif
