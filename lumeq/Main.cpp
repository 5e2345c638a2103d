// lumeq: what hosts may send, and why a call is refused.
#include "lumeq/Lint.h"
#include "lumeq/Schema.h"
#include "lumeq/doctor/CompanionLoading.h"
#include "lumeq/doctor/Doctor.h"
#include "lumeq/view/View.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <functional>
#include <io.h>

namespace Zuvan::Lumeq::Tool {

namespace {

constexpr char Footer[] = R"(
Examples:
  lumeq schema show ButtonClicked     what a call may contain, and what is recorded of it
  lumeq lint calls.jsonl              which calls of a session are refused, and why
  lumeq explain mode dark__v2         whether a pattern accepts a text
  lumeq view Lumeq.Log.txt            a page about what a host did and what came of it
  lumeq doctor scan.exe               why nothing arrives from this machine

Exit codes: 0 nothing found, 1 something found, 2 the command line is wrong or a file cannot be read.
Colours appear on a terminal only; NO_COLOR turns them off.)";

/// What the chosen subcommand does.
using Action = std::function<ExitCode(const Output&)>;

void AddShow(CLI::App& schema, Action& action) {
    static std::string name;
    static bool asJson = false;
    CLI::App* show = schema.add_subcommand("show", "Shows an operation, an enumeration or a pattern");
    show->add_option("NAME", name, "for example ButtonClicked, Scan::SourceType, mode")->required();
    show->add_flag("--json", asJson, "print the catalogue's entry");
    show->footer("\nExamples:\n  lumeq schema show ButtonClicked\n  lumeq schema show mode --json");
    show->callback([&action] {
        action = [](const Output& output) {
            return ShowSchema(Catalogue::OfThisProgram(), name, asJson, output);
        };
    });
}

void AddList(CLI::App& schema, Action& action) {
    CLI::App* list = schema.add_subcommand("list", "Lists the operations, enumerations and patterns");
    list->callback([&action] {
        action = [](const Output& output) { return ListSchema(Catalogue::OfThisProgram(), output); };
    });
}

void AddExport(CLI::App& schema, Action& action) {
    static std::string format = "json";
    static std::string page = "reference";
    CLI::App* exported = schema.add_subcommand("export", "Prints the whole catalogue");
    exported->add_option("--format", format, "md: a page to read; json: the catalogue (default)")
        ->check(CLI::IsMember({"md", "json"}));
    exported->add_option("--page", page, "which page md prints: reference (default) or privacy")
        ->check(CLI::IsMember({"reference", "privacy"}));
    exported->footer("\nExamples:\n  lumeq schema export --format md > reference.md\n"
                     "  lumeq schema export --format md --page privacy > privacy.md\n"
                     "  lumeq schema export > lumeq-1.0.json     keep it for a later `schema diff`");
    exported->callback([&action] {
        action = [](const Output& output) {
            const Catalogue& catalogue = Catalogue::OfThisProgram();
            output.Line(format == "json"    ? catalogue.Whole().dump(2)
                        : page == "privacy" ? PrivacySheet(catalogue)
                                            : ReferencePage(catalogue));
            return Clean;
        };
    });
}

void AddDiff(CLI::App& schema, Action& action) {
    static std::string older, newer;
    static bool asJson = false;
    CLI::App* diff =
        schema.add_subcommand("diff", "Says what a newer catalogue breaks for hosts and for receivers");
    diff->add_option("OLD", older, "a catalogue file")->required();
    diff->add_option("NEW", newer, "a catalogue file; without it, the program's own catalogue");
    diff->add_flag("--json", asJson, "print an array of changes");
    diff->footer("\nThe exit code is 1 if anything breaks.\n\nExamples:\n  lumeq schema diff lumeq-1.0.json\n"
                 "  lumeq schema diff lumeq-1.0.json lumeq-1.1.json --json");
    diff->callback([&action] {
        action = [](const Output& output) {
            const Catalogue old = Catalogue::ReadFrom(older);
            return newer.empty() ? ShowSchemaDiff(old, Catalogue::OfThisProgram(), asJson, output)
                                 : ShowSchemaDiff(old, Catalogue::ReadFrom(newer), asJson, output);
        };
    });
}

void AddLint(CLI::App& app, Action& action) {
    static LintOptions options;
    CLI::App* lint = app.add_subcommand("lint", "Says which calls of a session are refused, and why");
    lint->add_option("FILE", options.files, "sessions in the format that samples/host/README.md describes")
        ->required();
    lint->add_flag("--json", options.asJson, "print findings and the verdict on each call");
    lint->add_flag("--verdicts", options.verdictsOnly, "print the verdicts alone, as JSON");
    lint->add_flag("--strict", options.isStrict, "warnings count for the exit code too");
    lint->add_flag("--no-notes", options.hidesNotes, "leave notes out");
    lint->footer(
        "\nAn error is a call that is refused, or a line that no host could play. A warning is a call that "
        "is\n"
        "made but likely wrong, or a value that looks personal. The exit code is 1 if there are errors.\n\n"
        "Examples:\n  lumeq lint calls.jsonl\n  lumeq lint --strict --no-notes calls.jsonl\n"
        "  lumeq lint --json calls.jsonl > findings.json");
    lint->callback([&action] {
        action = [](const Output& output) { return Lint(Catalogue::OfThisProgram(), options, output); };
    });
}

void AddExplain(CLI::App& app, Action& action) {
    static ExplainOptions options;
    CLI::App* explain =
        app.add_subcommand("explain", "Says whether a pattern accepts a text, and if not, why");
    explain->add_option("PATTERN", options.pattern, "for example mode; `lumeq schema list` shows all")
        ->required();
    explain->add_option("TEXT", options.text, "the text")->required();
    explain->add_flag("--spelled", options.isSpelled,
                      R"(TEXT is JSON, as a session spells texts: "a\u0085b")");
    explain->add_flag("--json", options.asJson, "print the verdict as JSON");
    explain->footer(
        "\nThe exit code is 1 if the text is refused.\n\nExamples:\n  lumeq explain mode dark__v2\n"
        "  lumeq explain screenName \"My Screen\"\n  lumeq explain --spelled context '{\"units\": [133]}'");
    explain->callback([&action] {
        action = [](const Output& output) {
            return ExplainText(Catalogue::OfThisProgram(), options, output);
        };
    });
}

void AddView(CLI::App& app, Action& action) {
    static ViewOptions options;
    CLI::App* view = app.add_subcommand("view", "Writes a page about what a host did and what came of it");
    view->add_option(
            "RUN", options.runs,
            "a folder with the files of a run, a session, or a Lumeq.Log.txt alone; two are compared")
        ->required();
    view->add_option("-o,--output", options.page, "the page; - for standard output (default: lumeq.html)");
    view->add_flag("--each", options.isEach, "show the runs one after the other");
    view->add_flag("--text", options.isText, "print a line for each call instead");
    view->add_flag("--unmasked", options.isUnmasked,
                   "leave tokens, identifiers of devices and user names in paths readable");
    view->footer(
        "\nThe page is one HTML file that loads nothing. Its log needs the level \"trace\" for all calls.\n\n"
        "Examples:\n  lumeq view run -o page.html        a run that tools/play left\n"
        "  lumeq view Lumeq.Log.txt           the log that a customer sends\n"
        "  lumeq view before after            two runs side by side\n"
        "  lumeq view --each run1 run2 run3   several runs on one page\n"
        "  lumeq view --text calls.jsonl      what the library would do with each call");
    view->callback([&action] {
        action = [](const Output& output) { return View(Catalogue::OfThisProgram(), options, output); };
    });
}

void AddDoctor(CLI::App& app, Action& action) {
    static Doctor::DoctorOptions options;
    CLI::App* doctor = app.add_subcommand("doctor", "Says why nothing arrives from this machine");
    auto* const host = doctor->add_option("HOST", options.host, "the application's executable");
    doctor->add_option("--pid", options.processId, "the number of a process of the application")
        ->excludes(host);
    doctor->add_flag("--json", options.asJson, "print the report as JSON");
    doctor->add_option("--bundle", options.bundle,
                       "write report, settings and logs to this ZIP file, without secrets");
    doctor->add_option("--only", options.only, "run these checks only, for example network")->delimiter(',');
    doctor->add_option("--app-name", options.appName, "the name that the application passes to StartupEx");
    doctor->add_option("--subfolder", options.subfolder,
                       "the subfolder of the settings that it chose, if any");
    doctor->add_option("--seconds", options.seconds, "how long each answer may take (default: 10)")
        ->check(CLI::Range(0.1, 600.0));
    doctor->add_flag("!--no-load", options.loadsCompanion,
                     "do not load the companion library, which runs its code in a process of its own");
    doctor->add_flag("--list", options.listsKinds, "list everything that can be found, as a table");
    doctor->footer(
        "\nChanges nothing on the machine and sends no message. The exit code is 1 if something keeps events "
        "or\nmessages from arriving, and 2 if there is no such application.\n\nExamples:\n"
        "  lumeq doctor \"C:\\Program Files\\Scan Studio\\scan.exe\"\n  lumeq doctor --pid 4711 --json\n"
        "  lumeq doctor scan.exe --bundle for-support.zip\n  lumeq doctor scan.exe --only network,wmi");
    doctor->callback([&action] { action = [](const Output& output) { return RunDoctor(options, output); }; });
}

/// For `lumeq doctor` itself, so it is in no help.
void AddCompanionLoading(CLI::App& app, Action& action) {
    static std::string companion, host;
    CLI::App* loading = app.add_subcommand(Doctor::LoadingCommand)->group("");
    loading->add_option("COMPANION", companion)->required();
    loading->add_option("HOST", host)->required();
    loading->callback([&action] {
        action = [](const Output&) {
            return static_cast<ExitCode>(Doctor::LoadCompanionHere(companion, host));
        };
    });
}

ExitCode Run(std::vector<std::string> arguments) {
    CLI::App app("Says what hosts of Lumeq may send, and why a call is refused.", "lumeq");
    app.set_version_flag("--version", std::string("lumeq " LUMEQ_VERSION));
    // A path may begin with a slash.
    app.allow_windows_style_options(false);
    app.require_subcommand(1);
    app.footer(Footer);
    Action action;
    CLI::App* schema = app.add_subcommand("schema", "Shows the event catalogue");
    schema->require_subcommand(1);
    AddShow(*schema, action);
    AddList(*schema, action);
    AddExport(*schema, action);
    AddDiff(*schema, action);
    AddLint(app, action);
    AddExplain(app, action);
    AddView(app, action);
    AddDoctor(app, action);
    AddCompanionLoading(app, action);
    if (arguments.empty()) {
        Output(stderr).Line(app.help());
        return CannotRun;
    }
    try {
        std::reverse(arguments.begin(), arguments.end());
        app.parse(arguments);
    } catch (const CLI::ParseError& problem) {
        return app.exit(problem) == 0 ? Clean : CannotRun;
    }
    return action(Output(stdout));
}

} // namespace
} // namespace Zuvan::Lumeq::Tool

int wmain(int count, wchar_t** arguments) {
    using namespace Zuvan::Lumeq;
    // Text mode would end lines in a carriage return too.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i)
        texts.push_back(SampleHost::ToUtf8(arguments[i]));
    try {
        return Tool::Run(std::move(texts));
    } catch (const std::exception& problem) {
        Tool::Output(stderr).Line(std::string("lumeq: ") + problem.what());
        return Tool::CannotRun;
    }
}
