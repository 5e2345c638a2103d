#include "lumeq/view/Comparison.h"

#include "lumeq/view/Alignment.h"
#include "lumeq/view/Outcome.h"

#include <string_view>

namespace Zuvan::Lumeq::Tool {

namespace {

/// The value that a call leaves in a variable is an address, which differs in every run.
std::string ArgumentsText(const ViewedCall& call) {
    std::string text;
    for (const ViewedArgument& argument : call.arguments)
        if (argument.name != "taskHandle" || !argument.value.starts_with("0x"))
            text += '\n' + argument.name + ' ' + argument.value;
    return text;
}

void RemoveVolatile(Json& json) {
    if (!json.is_structured())
        return;
    if (json.is_object())
        for (const char* name : {"timestamp", "_app_event_task_guid", "task_duration"})
            json.erase(name);
    for (Json& value : json)
        RemoveVolatile(value);
}

bool RecordsAreEqual(const ViewedCall& a, const ViewedCall& b) {
    if (a.handedOver.size() != b.handedOver.size())
        return false;
    for (std::size_t i = 0; i < a.handedOver.size(); ++i) {
        Json one = a.handedOver[i], other = b.handedOver[i];
        RemoveVolatile(one);
        RemoveVolatile(other);
        if (one != other)
            return false;
    }
    return true;
}

std::vector<std::string> DifferencesOf(const ViewedCall& a, const ViewedCall& b) {
    std::vector<std::string> differences;
    if (ArgumentsText(a) != ArgumentsText(b))
        differences.emplace_back("arguments");
    if (std::string_view(VerdictWord(a)) != VerdictWord(b))
        differences.emplace_back("verdict");
    if (!RecordsAreEqual(a, b))
        differences.emplace_back("record");
    if (a.answer != b.answer)
        differences.emplace_back("answer");
    return differences;
}

class Pairing {
public:
    Pairing(const Run& a, const Run& b) : _a(a), _b(b) {}

    std::vector<ComparedCall> All() {
        std::size_t a = 0, b = 0;
        for (const auto& [i, j] : Align(Keys(_a), Keys(_b))) {
            Gap(a, i, b, j);
            Add(i, j);
            a = i + 1;
            b = j + 1;
        }
        Gap(a, _a.calls.size(), b, _b.calls.size());
        return std::move(_compared);
    }

private:
    static std::vector<std::string> Keys(const Run& run) {
        std::vector<std::string> keys;
        for (const ViewedCall& call : run.calls)
            keys.push_back(call.name + ArgumentsText(call));
        return keys;
    }

    static std::vector<std::string> Names(const Run& run, std::size_t begin, std::size_t end) {
        std::vector<std::string> names;
        for (; begin < end; ++begin)
            names.push_back(run.calls[begin].name);
        return names;
    }

    /// Calls with other arguments, paired by their names.
    void Gap(std::size_t a, std::size_t endOfA, std::size_t b, std::size_t endOfB) {
        const std::size_t beginOfA = a, beginOfB = b;
        for (const auto& [i, j] : Align(Names(_a, a, endOfA), Names(_b, b, endOfB))) {
            AddSingles(a, beginOfA + i, b, beginOfB + j);
            Add(a++, b++);
        }
        AddSingles(a, endOfA, b, endOfB);
    }

    void AddSingles(std::size_t& a, std::size_t endOfA, std::size_t& b, std::size_t endOfB) {
        for (; a < endOfA; ++a)
            _compared.push_back({a, std::nullopt, {"only in A"}});
        for (; b < endOfB; ++b)
            _compared.push_back({std::nullopt, b, {"only in B"}});
    }

    void Add(std::size_t a, std::size_t b) {
        _compared.push_back({a, b, DifferencesOf(_a.calls[a], _b.calls[b])});
    }

    const Run& _a;
    const Run& _b;
    std::vector<ComparedCall> _compared;
};

} // namespace

std::vector<ComparedCall> Compare(const Run& a, const Run& b) { return Pairing(a, b).All(); }

} // namespace Zuvan::Lumeq::Tool
