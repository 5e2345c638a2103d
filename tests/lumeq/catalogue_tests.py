"""schema/lumeq.json against its JSON Schema, the public headers, the sources' patterns, and the model of the rules."""

import json
import re
import sys
import unittest
from pathlib import Path
from typing import Iterator

import jsonschema

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import ROOT  # noqa: E402
import schema as model  # noqa: E402
from session_model import SessionModel  # noqa: E402
from circumstances import Circumstances  # noqa: E402
from wide_text import session_text, wide  # noqa: E402

CATALOGUE = json.loads((ROOT / "schema" / "lumeq.json").read_text(encoding="utf-8"))
JSON_SCHEMA = json.loads((ROOT / "schema" / "lumeq.schema.json").read_text(encoding="utf-8"))
OPERATIONS = {operation["name"]: operation for operation in CATALOGUE["operations"]}
PATTERNS = CATALOGUE["patterns"]
ENUMERATIONS = CATALOGUE["enumerations"]

CPP_HEADER = (ROOT / "include" / "Lumeq" / "LumeqApi.h").read_text()
JAVASCRIPT_CONSTANTS = (ROOT / "bindings" / "node" / "raw.js").read_text()
RUST_VOCABULARY = (ROOT / "bindings" / "rust" / "src" / "vocabulary.rs").read_text()
C_HEADER = (ROOT / "include" / "Lumeq" / "lumeq.h").read_text()

# Where the patterns of the event classes are. Those of the exports are in one file.
SOURCES = {"urlLabel": "LabelChecks", "hyperlinkLabel": "LabelChecks", "reportMoniker": "LabelChecks",
           "formMoniker": "LabelChecks", "completedResult": "EventingTask", "recordedVersion": "TaskDetails"}
OF_THE_MODEL = {"hyperlinkLabel": model.HYPERLINK_LABEL, "urlLabel": model.URL_LABEL,
                "completedResult": model.TASK_RESULT, **model.PATTERNS}

# The model's words for kinds of arguments, where they are others.
KINDS = {"context": "fields", "details": "fields", "handle": "task", "narrow": "narrow text", "result": "text result",
         "required": "text", "optional": "text", "model": "text"}


def signatures() -> Iterator[tuple[str, str, list[tuple[str, str]]]]:
    for result, name, parameters in re.findall(r"^LUMEQ_API ([\w:]+) (\w+)\((.*?)\);", CPP_HEADER, re.S | re.M):
        each = [" ".join(parameter.split()) for parameter in parameters.split(",") if parameter.strip()]
        yield result, name, [tuple(parameter.rsplit(" ", 1)) for parameter in each]


def cpp_enumerations() -> dict[str, list[tuple[str, int]]]:
    found, namespace = {}, ""
    for line in re.findall(r"^(?:namespace \w+ \{|\} // namespace[^\n]*|enum class .*?\};)", CPP_HEADER, re.S | re.M):
        if line.startswith("enum"):
            name = re.match(r"enum class (\w+)", line)[1]
            found[namespace + name] = [(row, int(value)) for row, value in re.findall(r"(\w+) = (\d+)", line)]
        else:
            namespace = line.split()[1] + "::" if line.startswith("namespace") else ""
    return found


def source_expression(name: str) -> tuple[str, bool]:
    """The text of a pattern as the library spells it, and whether it ignores case."""
    folder, file = ("LumeqLib/Extra/Eventing", SOURCES[name]) if name in SOURCES else ("LumeqApi", "Patterns")
    text = (ROOT / folder / f"{file}.cpp").read_text()
    definition = re.search(rf"\b{name}Pattern =\s*(\w+|.*?>);", text, re.S)[1]
    if definition == "AdText":
        definition = re.search(r"Pattern AdText =\s*(.*?>);", text, re.S)[1]
    literals = re.findall(r'LR"\((.*?)\)"|L"(.*?)"', definition, re.S)
    return "".join(map("".join, literals)).removeprefix("^").removesuffix("$"), definition.endswith("Ignored>")


def all_fields() -> Iterator[tuple[str, dict, set[str]]]:
    """Each field of a record, with the name of its operation and the arguments that it may name."""
    shared = CATALOGUE["event"]["fields"] + CATALOGUE["message"]["fields"]
    yield from (("", field, {"globalContext", "localContext"}) for field in shared)
    for name, operation in OPERATIONS.items():
        arguments = {argument["name"] for argument in operation["arguments"]}
        yield from ((name, field, arguments) for field in operation.get("record", {}).get("details", []))


# Enumerations that no event has: lumeq_get_state reports them.
OF_THE_STATE = ("lumeq_choice", "lumeq_road")


class CatalogueItself(unittest.TestCase):
    maxDiff = None

    def test_is_valid_by_its_schema(self):
        jsonschema.Draft202012Validator.check_schema(JSON_SCHEMA)
        problems = [f"{list(problem.absolute_path)}: {problem.message}"
                    for problem in jsonschema.Draft202012Validator(JSON_SCHEMA).iter_errors(CATALOGUE)]
        self.assertEqual([], problems)

    def test_schema_refuses_what_is_not_known(self):
        for path, value in (("operations/0/sentense", "x"), ("patterns/mode/words", "no full stop"),
                            ("operations/0/arguments/0/type", "string"), ("privacyClasses/free/person", "perhaps"),
                            ("enumerations/AdType/values/0/value", "0")):
            spoiled = json.loads(json.dumps(CATALOGUE))
            *parents, last = path.split("/")
            place = spoiled
            for parent in parents:
                place = place[int(parent) if parent.isdigit() else parent]
            place[last] = value
            with self.subTest(path):
                self.assertFalse(jsonschema.Draft202012Validator(JSON_SCHEMA).is_valid(spoiled))

    def test_names_only_what_it_has(self):
        for name, operation in OPERATIONS.items():
            arguments = {argument["name"] for argument in operation["arguments"]}
            templates = [operation.get("record", {}).get("label", ""),
                         operation.get("eventClassCheck", {}).get("value", "")]
            with self.subTest(name):
                self.assertLessEqual(set(re.findall(r"\{(\w+)\}", "".join(templates))), arguments)
                self.assertLessEqual({argument["pattern"] for argument in operation["arguments"]
                                      if "pattern" in argument}, PATTERNS.keys())
                self.assertLessEqual({argument["enumeration"] for argument in operation["arguments"]
                                      if "enumeration" in argument}, ENUMERATIONS.keys())
                self.assertIn(operation.get("eventClassCheck", {}).get("pattern", "mode"), PATTERNS)
                self.assertLessEqual({pattern.get("stricter", "mode") for pattern in PATTERNS.values()}, PATTERNS.keys())
                for changes in (operation["example"], *operation["accepted"],
                                *(refusal["with"] for refusal in operation["refused"])):
                    self.assertLessEqual(changes.keys(), arguments)
        for name, field, arguments in all_fields():
            with self.subTest(name, field=field["field"]):
                self.assertIn(field["privacy"], CATALOGUE["privacyClasses"])
                self.assertIn(field.get("argument", "localContext"), arguments | {"localContext"})

    def test_every_pattern_and_enumeration_and_privacy_class_is_used(self):
        used = {value for operation in OPERATIONS.values() for argument in operation["arguments"]
                for value in (argument.get("pattern"), argument.get("enumeration"))}
        used |= {operation.get("eventClassCheck", {}).get("pattern") for operation in OPERATIONS.values()}
        used |= {pattern.get("stricter") for pattern in PATTERNS.values()}
        self.assertEqual(set(), (PATTERNS.keys() | ENUMERATIONS.keys()) - used)
        classes = {field["privacy"] for _, field, _ in all_fields()}
        classes |= {operation.get("record", {}).get("labelPrivacy") for operation in OPERATIONS.values()}
        self.assertEqual(set(), CATALOGUE["privacyClasses"].keys() - classes)


class PublicHeaders(unittest.TestCase):
    maxDiff = None

    def test_operations_are_those_of_the_cpp_header(self):
        results = {"task": "TaskHandle", "flag": "bool", "number": "std::int32_t", None: "void"}
        catalogue = [(results[operation.get("returns")], name,
                      [(argument["cppType"], argument["name"]) for argument in operation["arguments"]])
                     for name, operation in OPERATIONS.items()]
        self.assertEqual(list(signatures()), catalogue)
        self.assertEqual((ROOT / "tests" / "exports.txt").read_text().split(), sorted(OPERATIONS))

    def test_types_are_those_of_the_signatures(self):
        types = {"const std::wstring&": ("text", True), "const wchar_t*": ("text", False),
                 "const StringDictionary*": ("fields", False), "const StringDictionary&": ("fields", True),
                 "const ScanFeatureMap&": ("features", True), "const DiscoveredDeviceList&": ("devices", True),
                 "TaskHandle*": ("task", True), "bool": ("flag", True), "unsigned char": ("byte", True),
                 "std::int32_t": ("number", True), "const std::string&": ("narrow text", True),
                 "const char*": ("narrow text", True), "std::wstring&": ("text result", True),
                 "wchar_t*": ("buffer", False), "std::size_t": ("size", True)}
        for name, operation in OPERATIONS.items():
            for argument in operation["arguments"]:
                with self.subTest(name, argument=argument["name"]):
                    its = argument["type"], argument["required"]
                    if name == "SetGlobalContextEx":
                        # A pointer that must not be null.
                        self.assertEqual(("text", True), its)
                    elif "enumeration" in argument:
                        self.assertEqual(("enumeration", True), its)
                        self.assertEqual(argument["cppType"], argument["enumeration"])
                    else:
                        self.assertEqual(types[argument["cppType"]], its)

    def test_enumerations_are_those_of_the_cpp_header(self):
        self.assertEqual(cpp_enumerations(),
                         {name: [(row["name"], row["value"]) for row in enumeration["values"]]
                          for name, enumeration in ENUMERATIONS.items()})
        self.assertEqual(23, len(ENUMERATIONS))

    def test_constants_are_those_of_the_c_header(self):
        header = {name: [(row, int(value)) for row, value in re.findall(r"(\w+) = (\d+)", body)]
                  for name, body in re.findall(r"^enum (\w+) \{(.*?)\}", C_HEADER, re.S | re.M)
                  if name not in OF_THE_STATE}
        self.assertEqual(header, {
            enumeration["cEnumeration"]: [(enumeration["cPrefix"] + row["name"].rstrip("_").upper(), row["value"])
                                          for row in enumeration["values"]]
            for enumeration in ENUMERATIONS.values()})

    def test_constants_are_those_of_the_rust_binding(self):
        binding = {name: [(row, int(value)) for row, value in re.findall(r"(\w+) = (\d+),", body)]
                   for name, body in re.findall(r"^/// `enum (\w+)` of lumeq\.h\.\n(?:#[^\n]*\n)*pub enum \w+ \{(.*?)^\}",
                                                RUST_VOCABULARY, re.S | re.M) if name not in OF_THE_STATE}
        self.assertEqual(binding, {
            enumeration["cEnumeration"]: [("".join(part.capitalize() for part in row["name"].split("_")), row["value"])
                                          for row in enumeration["values"]]
            for enumeration in ENUMERATIONS.values()})

    def test_constants_are_those_of_the_javascript_module(self):
        module = {"lumeq_" + name: [(row, int(value)) for row, value in re.findall(r"(\w+): (\d+),", body)]
                  for name, body in re.findall(r"^exports\.(\w+) = Object\.freeze\(\{(.*?)^\}\);", JAVASCRIPT_CONSTANTS,
                                               re.S | re.M) if "lumeq_" + name not in OF_THE_STATE}
        self.assertEqual(module, {
            enumeration["cEnumeration"]: [(row["name"].rstrip("_"), row["value"]) for row in enumeration["values"]]
            for enumeration in ENUMERATIONS.values()})

    def test_c_functions_exist(self):
        functions = set(re.findall(r"^LUMEQ_C_API [^(]*?\b(lumeq_\w+)\(", C_HEADER, re.M))
        for name, operation in OPERATIONS.items():
            with self.subTest(name):
                self.assertIn(operation["cFunction"], functions)


class Sources(unittest.TestCase):
    def test_expressions_are_those_of_the_library(self):
        for name, pattern in PATTERNS.items():
            with self.subTest(name):
                self.assertEqual(source_expression(name), (pattern["expression"], pattern["ignoresCase"]))
                self.assertEqual("event class" if name in SOURCES else "export", pattern["checkedBy"])


class IndependentModel(unittest.TestCase):
    maxDiff = None

    def test_has_the_same_operations_and_arguments(self):
        def of_model(argument: model.Argument) -> tuple:
            pattern = argument.pattern or ("biid" if argument.kind == "devices" else None)
            return argument.name, KINDS.get(argument.kind, argument.kind), pattern, bool(argument.enumeration)

        self.assertEqual(
            {name: [of_model(argument) for argument in export.arguments] for name, export in model.EXPORTS.items()},
            {name: [(argument["name"], argument["type"], argument.get("pattern"), "enumeration" in argument)
                    for argument in operation["arguments"]] for name, operation in OPERATIONS.items()})

    def test_has_the_same_enumerations(self):
        for name, operation in OPERATIONS.items():
            for argument, its in zip(operation["arguments"], model.EXPORTS[name].arguments):
                if its.enumeration:
                    rows = ENUMERATIONS[argument["enumeration"]]["values"]
                    with self.subTest(name, argument=argument["name"]):
                        self.assertEqual(its.enumeration.texts, tuple(row["text"] for row in rows))
                        if its.enumeration.records:
                            self.assertEqual(its.enumeration.records, tuple(row["record"] for row in rows))

    def test_decides_alike_on_the_examples_of_the_patterns(self):
        for name, rule in OF_THE_MODEL.items():
            for verdict in ("accepted", "refused"):
                for text in PATTERNS[name][verdict]:
                    with self.subTest(name, text=text):
                        self.assertEqual(verdict == "accepted", rule.matches(wide(text)))

    def test_predicts_the_record_that_the_catalogue_describes(self):
        for name, operation in OPERATIONS.items():
            record = operation.get("record", {})
            if record.get("kind") != "event":
                continue
            with self.subTest(name):
                session = SessionModel(Circumstances())
                for step in example_session(operation):
                    session.call(step)
                self.assertEqual([], record_differences(operation, session.prediction().operations[-1]["record"]))


def example_session(operation: dict) -> list[dict]:
    """The calls that lead to the operation's example, which is the last."""
    call = {"call": operation["name"], **operation["example"]}
    if operation["name"].endswith("Completed"):
        return [{"call": operation["task"] + "Initiated", "handle": "task"}, {**call, "taskHandle": "task"}]
    return [{**call, "handle": "task"} if "task" in operation else call]


def composed(template: str, arguments: dict) -> str:
    """A text of a template; a part in brackets is missing without its argument."""
    def part(match: re.Match) -> str:
        return match[1] if all(arguments.get(name) for name in re.findall(r"\{(\w+)\}", match[1])) else ""

    return re.sub(r"\{(\w+)\}", lambda match: arguments[match[1]], re.sub(r"\[([^\]]*)\]", part, template))


def record_differences(operation: dict, record: dict) -> list[str]:
    """Between the record of the operation's example and its description."""
    example, its = operation["example"], operation["record"]
    found = []

    def expect(field: str, expected, actual) -> None:
        if expected != actual:
            found.append(f"{field}: described {expected!r}, is {actual!r}")

    expect("actor", its["actor"], record["app_event_actor"])
    expect("action", its["action"][0], record["app_event_action"])
    expect("object", its["object"], record["app_event_object"])
    texts = {name: value.partition("?")[0] if name == "url" else value
             for name, value in example.items() if isinstance(value, str)}
    expect("label", composed(its["label"], texts), record["app_event_object_label"])
    details, fields = record["app_event_details"] or {}, {field["field"]: field for field in its["details"]}
    own = {argument["name"]: argument for argument in operation["arguments"]}
    hosts = [key for key in details if key not in fields]
    expect("the host's own fields", sorted(example["details"]) if "*" in fields else [], sorted(hosts))
    expect("fields", sorted(fields.keys() - {"*"}), sorted(details.keys() - set(hosts)))
    for name, field in fields.items():
        if "constant" in field:
            expect(name, field["constant"], details.get(name))
        elif "composed" in field:
            expect(name, composed(field["composed"], texts), details.get(name))
        elif "argument" in field and name != "*":
            expect(name, recorded(own[field["argument"]], example[field["argument"]]), details.get(name))
    return found


def recorded(argument: dict, value):
    if "enumeration" in argument:
        return ENUMERATIONS[argument["enumeration"]]["values"][value]["text"]
    if argument["type"] == "features":
        return {name: str(on).lower() for name, on in value.items()}
    return session_text(value) if isinstance(value, (str, list)) else str(value)


if __name__ == "__main__":
    unittest.main()
