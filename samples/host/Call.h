// Calls one export with the arguments of a session.
#pragma once

#include "samples/host/Argument.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace SampleHost {

/// A step. `Result` and `Parameters` are those of the export. `names` are the arguments' names in the
/// session.
template <class Result, class... Parameters>
class Call {
public:
    using Names = std::array<const char*, sizeof...(Parameters)>;

    Call(std::string name, const Names& names, const Json& json) : _name(std::move(name)) {
        RequireKnownNames(names, json);
        ReadArguments(names, json, std::index_sequence_for<Parameters...>());
        if (json.contains(HandleMember))
            _handle = json[HandleMember].is_string() ? json[HandleMember].get<std::string>()
                                                     : throw BadLine("\"handle\": expected a name");
    }

    void operator()(Session& session) {
        Json line{{"call", _name}};
        if (auto* function = session.library.Find<Result(Parameters...)>(_name))
            Make(*function, session, line);
        else
            line["error"] =
                session.library.IsLoaded() ? "Lumeq.dll does not export it" : "Lumeq.dll is not loaded";
        session.Print(line);
    }

private:
    static constexpr const char* HandleMember = "handle";
    static constexpr bool OpensTask = std::is_same_v<Result, API::TaskHandle>;

    static void RequireKnownNames(const Names& names, const Json& json) {
        for (const auto& member : json.items()) {
            const std::string& key = member.key();
            if (key != "call" && !(OpensTask && key == HandleMember) &&
                std::find(names.begin(), names.end(), key) == names.end())
                throw BadLine("unknown argument \"" + key + "\"");
        }
    }

    template <std::size_t... Indices>
    void ReadArguments(const Names& names, const Json& json, std::index_sequence<Indices...>) {
        (ReadArgument(std::get<Indices>(_arguments), names[Indices], json), ...);
    }

    template <class AnyArgument>
    static void ReadArgument(AnyArgument& argument, const char* name, const Json& json) {
        try {
            const auto found = json.find(name);
            argument.Read(found == json.end() ? nullptr : &*found);
        } catch (const BadLine& problem) {
            throw BadLine("argument \"" + std::string(name) + "\": " + problem.what());
        }
    }

    void Make(Result (&function)(Parameters...), Session& session, Json& line) {
        std::apply(
            [&](auto&... arguments) {
                try {
                    if constexpr (std::is_void_v<Result>)
                        function(arguments.Pass(session)...);
                    else
                        ShowResult(function(arguments.Pass(session)...), session, line);
                    (arguments.Show(line), ...);
                } catch (const std::exception& escaped) {
                    line["error"] = std::string("it threw: ") + escaped.what();
                }
            },
            _arguments);
    }

    void ShowResult(bool result, Session&, Json& line) const { line["returns"] = result; }
    void ShowResult(std::int32_t result, Session&, Json& line) const { line["returns"]["result"] = result; }
    void ShowResult(API::TaskHandle result, Session& session, Json& line) const {
        session.Handle(_handle) = result;
        line["handle"] = result != nullptr ? "set" : "null";
    }

    std::string _name;
    std::string _handle;
    std::tuple<Argument<Parameters>...> _arguments;
};

} // namespace SampleHost
