#include "fuzz/support/Json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace Zuvan::Lumeq::Fuzzing {

namespace {

using nlohmann::json;

/// Collects the pairs while parsing, because a parsed object keeps only the last of two with the same name.
class FlatObject : public nlohmann::json_sax<json> {
public:
    JsonFields fields;

    bool start_object(std::size_t) override { return ++_depth == 1; }
    bool key(string_t& text) override {
        _key = text;
        return true;
    }
    bool string(string_t& text) override {
        fields.emplace_back(_key, text);
        return _depth == 1;
    }
    bool end_object() override { return true; }

    bool null() override { return false; }
    bool boolean(bool) override { return false; }
    bool number_integer(number_integer_t) override { return false; }
    bool number_unsigned(number_unsigned_t) override { return false; }
    bool number_float(number_float_t, const string_t&) override { return false; }
    bool binary(binary_t&) override { return false; }
    bool start_array(std::size_t) override { return false; }
    bool end_array() override { return false; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }

private:
    std::string _key;
    int _depth = 0;
};

} // namespace

std::optional<JsonFields> FieldsOfFlatObject(const std::string& text) {
    FlatObject object;
    if (!json::sax_parse(text, &object))
        return std::nullopt;
    std::sort(object.fields.begin(), object.fields.end());
    return object.fields;
}

std::optional<std::string> BodyOfOnlyMessage(const std::string& text) {
    const json envelope = json::parse(text, nullptr, false);
    const json* messages = envelope.is_object() && envelope.size() == 1 ? &envelope.front() : nullptr;
    if (!messages || !envelope.contains("messages") || !messages->is_array() || messages->size() != 1)
        return std::nullopt;
    const json& message = messages->front();
    if (!message.is_object() || message.size() != 1 || !message.contains("body") ||
        !message["body"].is_string())
        return std::nullopt;
    return message["body"].get<std::string>();
}

} // namespace Zuvan::Lumeq::Fuzzing
