#include "LumeqLib/Extra/Eventing/Variant.h"

#include "support/Utf8CodePage.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <windows.h>

#include <boost/format.hpp>

#include <malloc.h>
#include <random>
#include <utility>

namespace Zuvan::Lumeq::Extra::Eventing {

struct VariantAccess {
    static void* Value(const Variant& variant) { return variant._value; }
    static void SetType(Variant& variant, std::int32_t type) {
        variant._type = static_cast<Variant::ValueType>(type);
    }
    static void Clear(Variant& variant) { variant.Clear(); }
    static void* CloneValue(const Variant& variant) { return variant.CloneValue(); }
};

namespace {

using ValueType = Variant::ValueType;

/// A Variant that holds "kept" under a tag of no meaning, and gets its own tag back at the end.
struct VariantWithUndefinedType {
    explicit VariantWithUndefinedType(std::int32_t type) {
        variant = std::wstring(L"kept");
        VariantAccess::SetType(variant, type);
    }
    ~VariantWithUndefinedType() { VariantAccess::SetType(variant, 1); }

    bool IsUntouched(std::int32_t type) {
        if (static_cast<std::int32_t>(variant.Type()) != type)
            return false;
        VariantAccess::SetType(variant, 1);
        const bool isKept = variant.AsString() == L"kept";
        VariantAccess::SetType(variant, type);
        return isKept;
    }

    Variant variant;
};

std::size_t LiveHeapBlocks() {
    const auto heap = reinterpret_cast<HANDLE>(_get_heap_handle());
    std::size_t count = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry))
        count += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
    HeapUnlock(heap);
    return count;
}

/// How many heap blocks `action` leaves behind.
template <class Action>
std::ptrdiff_t BlocksLeftBehind(Action action) {
    const std::size_t before = LiveHeapBlocks();
    action();
    return static_cast<std::ptrdiff_t>(LiveHeapBlocks() - before);
}

const std::wstring LongText(100, L'x');

Variant Holding(const std::wstring& text) {
    Variant variant;
    variant = text;
    return variant;
}

Dictionary NestedRecord() {
    Dictionary record;
    record[L"inner"] = OneField(L"k", L"v");
    record[L"list"] = Variant::StringListType{L"a", L"b"};
    record[L"text"] = std::wstring(L"t");
    record[L"nothing"];
    return record;
}

template <class Action>
std::wstring InvalidOperation(Action action) {
    return FullMessageOf<Common::InvalidOperationException>(action);
}

} // namespace

TEST(Variant, IsNullAtFirst) {
    const Variant variant;
    EXPECT_EQ(variant.Type(), ValueType::Null);
    EXPECT_EQ(VariantAccess::Value(variant), nullptr);
    EXPECT_EQ(variant.StringIf(), nullptr);
    EXPECT_EQ(variant.StringListIf(), nullptr);
    EXPECT_EQ(variant.DictionaryIf(), nullptr);
}

TEST(Variant, TakesACopyOfAText) {
    std::wstring text = L"abc";
    Variant variant;
    variant = text;
    text = L"changed";
    EXPECT_EQ(variant.Type(), ValueType::String);
    EXPECT_EQ(variant.AsString(), L"abc");
    EXPECT_EQ(*variant.StringIf(), L"abc");
    EXPECT_EQ(variant.StringListIf(), nullptr);
    EXPECT_EQ(variant.DictionaryIf(), nullptr);
}

TEST(Variant, TakesACopyOfAList) {
    const Variant::StringListType list{L"a", L"", L"c"};
    Variant variant;
    variant = list;
    EXPECT_EQ(variant.Type(), ValueType::StringList);
    EXPECT_EQ(variant.AsStringList(), list);
    EXPECT_EQ(variant.StringIf(), nullptr);
    EXPECT_EQ(variant.DictionaryIf(), nullptr);
}

TEST(Variant, TakesACopyOfADictionary) {
    const Dictionary record = NestedRecord();
    Variant variant;
    variant = record;
    EXPECT_EQ(variant.Type(), ValueType::Dictionary);
    EXPECT_EQ(Show(variant), L"{inner: {k: \"v\"}, list: [\"a\", \"b\"], nothing: null, text: \"t\"}");
    EXPECT_EQ(record.size(), 4U);
}

TEST(Variant, TakesADictionaryOverAndLeavesTheSourceEmpty) {
    Dictionary record = NestedRecord();
    Variant variant;
    variant = std::move(record);
    EXPECT_EQ(Show(variant), L"{inner: {k: \"v\"}, list: [\"a\", \"b\"], nothing: null, text: \"t\"}");
    EXPECT_TRUE(record.empty());
}

TEST(Variant, GivesWritableAccess) {
    Variant variant;
    variant = NestedRecord();
    variant.AsDictionary()[L"inner"].AsDictionary()[L"k"].AsString() += L"w";
    variant.AsDictionary()[L"list"].AsStringList().push_back(L"c");
    EXPECT_EQ(Show(variant),
              L"{inner: {k: \"vw\"}, list: [\"a\", \"b\", \"c\"], nothing: null, text: \"t\"}");
}

TEST(Variant, NullIsNoString) {
    EXPECT_EQ(InvalidOperation([] { std::as_const(*std::make_unique<Variant>()).AsString(); }),
              L"Expected type: String, Actual type: Null");
}

TEST(Variant, NamesTheTypeThatIsNotString) {
    Variant variant;
    variant = Variant::StringListType{};
    EXPECT_EQ(InvalidOperation([&] { variant.AsString(); }),
              L"Expected type: String, Actual type: StringList");
    EXPECT_EQ(variant.Type(), ValueType::StringList);
}

TEST(Variant, NamesTheTypeThatIsNotStringList) {
    Variant variant;
    variant = Dictionary();
    EXPECT_EQ(InvalidOperation([&] { variant.AsStringList(); }),
              L"Expected type: StringList, Actual type: Dictionary");
    EXPECT_EQ(variant.Type(), ValueType::Dictionary);
}

TEST(Variant, NamesTheTypeThatIsNotDictionary) {
    Variant variant = Holding(L"kept");
    EXPECT_EQ(InvalidOperation([&] { variant.AsDictionary(); }),
              L"Expected type: Dictionary, Actual type: String");
    EXPECT_EQ(variant.AsString(), L"kept");
}

TEST(Variant, NamesAnUndefinedTypeByItsNumber) {
    VariantWithUndefinedType undefined(7);
    EXPECT_EQ(InvalidOperation([&] { undefined.variant.AsString(); }),
              L"Expected type: String, Actual type: [Undefined Variant::ValueType enumerand: 7]");
    EXPECT_TRUE(undefined.IsUntouched(7));
}

TEST(Variant, AssigningTheHeldTextChangesNothing) {
    Variant variant = Holding(LongText);
    void* const held = VariantAccess::Value(variant);
    const std::ptrdiff_t left = BlocksLeftBehind([&] { variant = variant.AsString(); });
    EXPECT_EQ(left, 0);
    EXPECT_EQ(VariantAccess::Value(variant), held);
    EXPECT_EQ(variant.AsString(), LongText);
}

TEST(Variant, AssigningTheHeldListChangesNothing) {
    Variant variant;
    variant = Variant::StringListType{L"a", L"b"};
    void* const held = VariantAccess::Value(variant);
    variant = variant.AsStringList();
    EXPECT_EQ(VariantAccess::Value(variant), held);
    EXPECT_EQ(Show(variant), L"[\"a\", \"b\"]");
}

TEST(Variant, AssigningTheHeldDictionaryChangesNothing) {
    Variant variant;
    variant = OneField(L"k", L"v");
    void* const held = VariantAccess::Value(variant);
    variant = std::as_const(variant).AsDictionary();
    EXPECT_EQ(VariantAccess::Value(variant), held);
    variant = std::move(variant.AsDictionary());
    EXPECT_EQ(VariantAccess::Value(variant), held);
    EXPECT_EQ(Show(variant), L"{k: \"v\"}");
}

TEST(Variant, TakesWhatLivesInsideItsOwnValue) {
    Variant variant;
    variant = NestedRecord();
    variant = std::as_const(variant).AsDictionary().at(L"inner").AsDictionary();
    EXPECT_EQ(Show(variant), L"{k: \"v\"}");
    variant = variant.AsDictionary()[L"k"].AsString();
    EXPECT_EQ(Show(variant), L"\"v\"");

    variant = NestedRecord();
    variant = std::move(variant.AsDictionary()[L"inner"].AsDictionary());
    EXPECT_EQ(Show(variant), L"{k: \"v\"}");

    variant = NestedRecord();
    variant = std::move(variant.AsDictionary()[L"inner"]);
    EXPECT_EQ(Show(variant), L"{k: \"v\"}");
    variant = std::as_const(variant).AsDictionary().at(L"k");
    EXPECT_EQ(Show(variant), L"\"v\"");
}

TEST(Variant, MovingANullOverATextFreesTheText) {
    Variant target = Holding(LongText);
    Variant source;
    const std::ptrdiff_t left = BlocksLeftBehind([&] { target = std::move(source); });
    EXPECT_EQ(left, -2); // the string object and its characters
    EXPECT_EQ(target.Type(), ValueType::Null);
    EXPECT_EQ(VariantAccess::Value(target), nullptr);
}

TEST(Variant, MoveAssignmentTakesTheValueAndLeavesNull) {
    Variant target = Holding(L"old");
    Variant source = Holding(L"new");
    void* const held = VariantAccess::Value(source);
    target = std::move(source);
    EXPECT_EQ(VariantAccess::Value(target), held);
    EXPECT_EQ(Show(target), L"\"new\"");
    EXPECT_EQ(source.Type(), ValueType::Null);
    EXPECT_EQ(VariantAccess::Value(source), nullptr);
}

TEST(Variant, MoveAssignmentOfItselfDoesNothing) {
    Variant variant = Holding(L"kept");
    Variant& itself = variant;
    variant = std::move(itself);
    EXPECT_EQ(Show(variant), L"\"kept\"");

    VariantWithUndefinedType undefined(5);
    Variant& undefinedItself = undefined.variant;
    undefined.variant = std::move(undefinedItself);
    EXPECT_TRUE(undefined.IsUntouched(5));
}

TEST(Variant, MoveConstructionTakesTheValueAndLeavesNull) {
    Variant source = Holding(L"text");
    const Variant target(std::move(source));
    EXPECT_EQ(Show(target), L"\"text\"");
    EXPECT_EQ(source.Type(), ValueType::Null);
    EXPECT_EQ(VariantAccess::Value(source), nullptr);
}

TEST(Variant, CopiesShareNothing) {
    Variant source = Holding(L"text");
    Variant constructed(source);
    Variant assigned = Holding(L"old");
    assigned = std::as_const(source);
    source.AsString() = L"changed";
    EXPECT_EQ(Show(constructed), L"\"text\"");
    EXPECT_EQ(Show(assigned), L"\"text\"");
}

TEST(Variant, CopyAssignmentOfItselfDoesNothing) {
    Variant variant = Holding(L"kept");
    const Variant& itself = variant;
    variant = itself;
    EXPECT_EQ(Show(variant), L"\"kept\"");
}

TEST(Variant, CopiedDictionaryIsAnIndependentTree) {
    const Dictionary source = NestedRecord();
    Dictionary copy = source;
    copy[L"inner"].AsDictionary()[L"k"] = std::wstring(L"changed");
    copy[L"inner"].AsDictionary()[L"more"] = std::wstring(L"x");
    copy[L"list"].AsStringList().clear();
    copy.erase(L"text");
    EXPECT_EQ(Show(source), L"{inner: {k: \"v\"}, list: [\"a\", \"b\"], nothing: null, text: \"t\"}");
    EXPECT_EQ(Show(copy), L"{inner: {k: \"changed\", more: \"x\"}, list: [], nothing: null}");
}

TEST(Variant, FreesEveryKindOfValue) {
    const auto useAll = [] {
        Variant variant;
        variant = LongText;
        variant = Variant::StringListType(20, LongText);
        variant = NestedRecord();
        Variant copy(variant);
        copy = Variant::StringListType(20, LongText);
        variant = std::move(copy);
        copy = LongText;
    };
    useAll();
    EXPECT_EQ(BlocksLeftBehind(useAll), 0);
}

TEST(Variant, ClearLeavesTheTag) {
    Variant variant = Holding(L"text");
    VariantAccess::Clear(variant);
    EXPECT_EQ(VariantAccess::Value(variant), nullptr);
    EXPECT_EQ(variant.Type(), ValueType::String);
    VariantAccess::SetType(variant, 0);
}

TEST(Variant, CloneOfNullIsNull) { EXPECT_EQ(VariantAccess::CloneValue(Variant()), nullptr); }

TEST(Variant, ClearRefusesAnUndefinedTag) {
    VariantWithUndefinedType undefined(4);
    EXPECT_EQ(
        FullMessageOf<Common::ArgumentOutOfRangeException>([&] { VariantAccess::Clear(undefined.variant); }),
        L"Undefined Variant::ValueType\nParameter name: _type\nActual value was 4.");
    EXPECT_TRUE(undefined.IsUntouched(4));
}

TEST(Variant, AssignmentRefusesAnUndefinedTagAndTouchesNeitherSide) {
    VariantWithUndefinedType undefined(-1);
    Dictionary record = OneField(L"k", L"v");
    Variant source = Holding(L"source");
    const auto refused = L"Undefined Variant::ValueType\nParameter name: _type\nActual value was -1.";
    using Refusal = Common::ArgumentOutOfRangeException;
    EXPECT_EQ(FullMessageOf<Refusal>([&] { undefined.variant = LongText; }), refused);
    EXPECT_EQ(FullMessageOf<Refusal>([&] { undefined.variant = Variant::StringListType{}; }), refused);
    EXPECT_EQ(FullMessageOf<Refusal>([&] { undefined.variant = std::as_const(record); }), refused);
    EXPECT_EQ(FullMessageOf<Refusal>([&] { undefined.variant = std::move(record); }), refused);
    EXPECT_EQ(FullMessageOf<Refusal>([&] { undefined.variant = std::move(source); }), refused);
    EXPECT_TRUE(undefined.IsUntouched(-1));
    EXPECT_EQ(Show(record), L"{k: \"v\"}");
    EXPECT_EQ(Show(source), L"\"source\"");
}

TEST(Variant, CopyRefusesAnUndefinedTagUnderAnotherParameterName) {
    VariantWithUndefinedType undefined(2147483647);
    const auto refused =
        L"Undefined Variant::ValueType\nParameter name: lumeqVariant._type\nActual value was 2147483647.";
    using Refusal = Common::ArgumentOutOfRangeException;
    EXPECT_EQ(FullMessageOf<Refusal>([&] { VariantAccess::CloneValue(undefined.variant); }), refused);
    EXPECT_EQ(FullMessageOf<Refusal>([&] { Variant copy(undefined.variant); }), refused);
    EXPECT_TRUE(undefined.IsUntouched(2147483647));
}

TEST(Variant, DestructionWithAnUndefinedTagDoesNotEndTheProgram) {
    Variant variant;
    VariantAccess::SetType(variant, 99);
}

TEST(ValueTypeName, NamesEveryType) {
    EXPECT_EQ(ValueTypeName(ValueType::Null), "Null");
    EXPECT_EQ(ValueTypeName(ValueType::String), "String");
    EXPECT_EQ(ValueTypeName(ValueType::StringList), "StringList");
    EXPECT_EQ(ValueTypeName(ValueType::Dictionary), "Dictionary");
    EXPECT_EQ(ValueTypeNameWide(ValueType::Null), L"Null");
    EXPECT_EQ(ValueTypeNameWide(ValueType::String), L"String");
    EXPECT_EQ(ValueTypeNameWide(ValueType::StringList), L"StringList");
    EXPECT_EQ(ValueTypeNameWide(ValueType::Dictionary), L"Dictionary");
}

TEST(ValueTypeName, HasItsNumbers) {
    EXPECT_EQ(static_cast<int>(ValueType::Null), 0);
    EXPECT_EQ(static_cast<int>(ValueType::String), 1);
    EXPECT_EQ(static_cast<int>(ValueType::StringList), 2);
    EXPECT_EQ(static_cast<int>(ValueType::Dictionary), 3);
}

TEST(ValueTypeName, TellsAnUndefinedTypeByItsNumber) {
    EXPECT_EQ(ValueTypeName(static_cast<ValueType>(4)), "[Undefined Variant::ValueType enumerand: 4]");
    EXPECT_EQ(ValueTypeName(static_cast<ValueType>(-1)), "[Undefined Variant::ValueType enumerand: -1]");
    EXPECT_EQ(ValueTypeNameWide(static_cast<ValueType>(-2147483647 - 1)),
              L"[Undefined Variant::ValueType enumerand: -2147483648]");
}

TEST(AddStringDictionary, AddsEveryPairAsAString) {
    Dictionary target = OneField(L"there", L"1");
    AddStringDictionary(target, {{L"a", L"x"}, {L"", L""}});
    EXPECT_EQ(Show(target), L"{: \"\", a: \"x\", there: \"1\"}");
}

TEST(AddStringDictionary, EmptySourceChangesNothing) {
    Dictionary empty;
    AddStringDictionary(empty, {});
    EXPECT_TRUE(empty.empty());
    Dictionary target = NestedRecord();
    AddStringDictionary(target, {});
    EXPECT_EQ(Show(target), L"{inner: {k: \"v\"}, list: [\"a\", \"b\"], nothing: null, text: \"t\"}");
}

TEST(AddStringDictionary, RefusesDuplicateKeysInSortedOrderAndAddsNothing) {
    Dictionary target;
    target[L"b"];
    target[L"a"] = std::wstring(L"1");
    target[L"only here"] = std::wstring(L"2");
    const StringDictionary source{{L"c", L"x"}, {L"b", L"y"}, {L"a", L"z"}};
    EXPECT_EQ(FullMessageOf<Common::ArgumentException>([&] { AddStringDictionary(target, source); }),
              L"Contains one or more duplicate keys: a, b\nParameter name: stringDictionary");
    EXPECT_EQ(Show(target), L"{a: \"1\", b: null, only here: \"2\"}");
}

TEST(AddStringDictionary, RefusesDuplicateKeysWhereTheCodePageIsUtf8) {
    const Testing::Utf8CodePage codePage;
    Dictionary target = OneField(L"a", L"1");
    EXPECT_EQ(FullMessageOf<Common::ArgumentException>([&] {
                  AddStringDictionary(target, {{L"a", L"2"}});
              }),
              L"Contains one or more duplicate keys: a\nParameter name: stringDictionary");
}

TEST(AddStringDictionary, TellsAPercentSignInAKeyAsItStands) {
    Dictionary target = OneField(L"100%1%", L"");
    EXPECT_EQ(FullMessageOf<Common::ArgumentException>([&] {
                  AddStringDictionary(target, {{L"100%1%", L"x"}});
              }),
              L"Contains one or more duplicate keys: 100%1%\nParameter name: stringDictionary");
}

TEST(AddStringDictionary, SubstitutesKeysAsBoostDoes) {
    constexpr wchar_t Units[] = L"%1%|-+ 0*.$sdn2\x6F22";
    std::mt19937 random(1);
    for (int i = 0; i < 20'000; ++i) {
        std::wstring key(random() % 8, L'%');
        for (wchar_t& unit : key)
            unit = Units[random() % (std::size(Units) - 1)];
        Dictionary target = OneField(key, L"");
        std::wstring thrown;
        try {
            AddStringDictionary(target, {{key, L"x"}});
        } catch (const Common::ArgumentException& refused) {
            thrown = refused.FullMessage();
        }
        ASSERT_EQ(thrown, (boost::wformat(L"Contains one or more duplicate keys: %1%") % key).str() +
                              L"\nParameter name: stringDictionary");
    }
}

TEST(AddStringDictionary, KeysThatDifferInLetterCaseAreDifferent) {
    Dictionary target = OneField(L"key", L"1");
    AddStringDictionary(target, {{L"Key", L"2"}, {L"KEY", L"3"}});
    EXPECT_EQ(Show(target), L"{KEY: \"3\", Key: \"2\", key: \"1\"}");
}

TEST(JoinStrings, PutsTheSeparatorBetween) {
    EXPECT_EQ(JoinStrings({}, L", "), L"");
    EXPECT_EQ(JoinStrings({L"a"}, L", "), L"a");
    EXPECT_EQ(JoinStrings({L"a", L"", L"c"}, L", "), L"a, , c");
    EXPECT_EQ(JoinStrings({L"", L""}, L"-"), L"-");
}

} // namespace Zuvan::Lumeq::Extra::Eventing
