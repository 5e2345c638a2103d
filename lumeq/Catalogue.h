// The event catalogue: what schema/lumeq.json says about operations, patterns, enumerations and records.
#pragma once

#include "samples/host/Json.h"

#include <string>
#include <string_view>
#include <vector>

namespace Zuvan::Lumeq::Tool {

using SampleHost::Json;

/// A catalogue that cannot be read. Its text names the file and the problem.
class CatalogueError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Catalogue {
public:
    /// Throws CatalogueError.
    static Catalogue ReadFrom(const std::string& path);
    /// The one that the program carries as a resource.
    static const Catalogue& OfThisProgram();

    const Json& Whole() const { return _json; }
    const Json& Operations() const { return _json.at("operations"); }
    const Json& Patterns() const { return _json.at("patterns"); }
    const Json& Enumerations() const { return _json.at("enumerations"); }
    const Json& PrivacyClasses() const { return _json.at("privacyClasses"); }

    /// Null if there is none of that name.
    const Json* FindOperation(const std::string& name) const;

    /// What a pattern asks for, in words without the final full stop.
    std::string WordsOf(const std::string& pattern) const;

private:
    explicit Catalogue(Json json) : _json(std::move(json)) {}

    Json _json;
};

/// The member's text; empty without it.
std::string TextOf(const Json& object, const char* member);

/// The member of `object`, or `fallback` without it.
template <class Value>
Value ValueOf(const Json& object, const char* member, Value fallback) {
    const auto found = object.find(member);
    return found == object.end() ? fallback : found->get<Value>();
}

/// "name(first, second)".
std::string SignatureOf(const Json& operation);

/// The operations and arguments that use a pattern: "ButtonClicked mode".
std::vector<std::string> UsersOf(const Catalogue& catalogue, const std::string& pattern);

/// The call of the operation's example, as a line of a session.
Json ExampleCall(const Json& operation);

} // namespace Zuvan::Lumeq::Tool
