"""What hosts and the companion library depend on, as data: exports with ordinals, signatures, enumerations, and the
sizes and offsets that the compiler chose."""

import re
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path[:0] = [str(Path(__file__).resolve().parent), str(Path(__file__).resolve().parents[1])]
import c_interface  # noqa: E402
from pe_file import PeFile  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]
LIBRARIES = ("Lumeq.dll", "LumeqC.dll")
RECORDS_NAMESPACE = "Zuvan::Lumeq::Extra::Eventing"

# Fields by class. Those of a class that befriends RecordLayout are private.
RECORDS = {
    f"{RECORDS_NAMESPACE}::Variant": ["_value", "_type"],
    f"{RECORDS_NAMESPACE}::EventingEvent": ["_timestamp", "_record"],
    f"{RECORDS_NAMESPACE}::CompletionEvent": ["_detailsKey", "_durationKey", "_resultKey"],
    f"{RECORDS_NAMESPACE}::Dictionary": [],
    f"{RECORDS_NAMESPACE}::StringDictionary": [],
    "std::wstring": [],
    "std::vector<std::wstring>": [],
    "Zuvan::LumeqShim::StartupTypes": ["howType", "whyType"],
    "Zuvan::Lumeq::API::DiscoveredDevice": ["reserved", "information"],
}

# Fields have no names in the compiled file, so the numbers come in the order of the expressions.
PROBE = """#include <Lumeq/LumeqApi.h>
#include <Lumeq/LumeqRecords.h>
#include <Lumeq/lumeq.h>
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
namespace {namespace} {{
struct RecordLayout {{
    static const unsigned long long numbers[];
}};
__attribute__((section(".layout"), used)) const unsigned long long RecordLayout::numbers[] = {{{numbers}}};
}}
"""


def _header(name: str) -> str:
    """Without comments."""
    return re.sub(r"//.*", "", (ROOT / "include" / "Lumeq" / name).read_text(encoding="utf-8"))


def _plain(text: str) -> str:
    return " ".join(text.split())


def exports(build: Path) -> dict:
    return {library: {export.name: export.ordinal for export in PeFile(build / library).exports()}
            for library in LIBRARIES}


def functions() -> dict:
    """Signatures by name: those of LumeqApi.h, of lumeq.h and of the companion library."""
    api = re.findall(r"^LUMEQ_API ([^;]*?)\b(\w+)\(([^;]*)\);", _header("LumeqApi.h"), re.MULTILINE)
    companion = re.findall(r"^using (\w+) = ([^;{]*\([^;]*\));", _header("LumeqRecords.h"), re.MULTILINE)
    return {
        "LumeqApi.h": {name: _plain(f"{result}({parameters})") for result, name, parameters in api},
        "lumeq.h": {f"lumeq_{its.name}": f"{its.result}({its.parameter_list})" for its in c_interface.functions()},
        "LumeqRecords.h": {name: _plain(signature) for name, signature in companion if name.endswith("Internal")},
    }


def enumerations() -> dict:
    """Values by name, of both headers."""
    found = {f"lumeq_{its.name}": its.rows for its in c_interface.enumerations()}
    spaces: list[str] = []
    for opened, closed, name, rows in re.findall(
            r"^namespace ([\w:]+) \{|^(\})\s*$|^enum class (\w+) : std::int32_t \{(.*?)\};", _header("LumeqApi.h"),
            re.MULTILINE | re.DOTALL):
        if opened:
            spaces.append(opened)
        elif closed and spaces:
            spaces.pop()
        elif name:
            found["::".join([*spaces[1:], name])] = {row: int(value) for row, value in
                                                     re.findall(r"(\w+) = (\d+)", rows)}
    return found


def _measured(compiler: list[str], build: Path, expressions: list[str]) -> list[int]:
    with tempfile.TemporaryDirectory() as name:
        source, compiled, numbers = Path(name, "Layout.cpp"), Path(name, "Layout.o"), Path(name, "numbers")
        source.write_text(PROBE.format(namespace=RECORDS_NAMESPACE, numbers=", ".join(expressions)))
        subprocess.run([*compiler, "-std=c++20", "-I", ROOT / "include", "-I", build / "include", "-c", source, "-o", compiled],
                       check=True)
        subprocess.run(["x86_64-w64-mingw32-objcopy", "-O", "binary", "--only-section=.layout", compiled, numbers],
                       check=True)
        return list(struct.unpack_from(f"<{len(expressions)}Q", numbers.read_bytes()))


def layouts(build: Path, compiler: list[str]) -> dict:
    """Size and fields of each struct of lumeq.h and of what crosses to the companion library. A field is its offset and,
    in lumeq.h, its type."""
    types = {"lumeq.h": {its.name: [(name, its_type) for its_type, name in its.fields] for its in c_interface.structs()},
             "records": {name: [(field,) for field in fields] for name, fields in RECORDS.items()}}
    expressions = [expression for rows in types.values() for name, fields in rows.items()
                   for expression in (f"sizeof({name})", *(f"offsetof({name}, {field})" for field, *_ in fields))]
    numbers = iter(_measured(compiler, build, expressions))
    return {kind: {name: {"size": next(numbers), "fields": {field: [next(numbers), *rest] for field, *rest in fields}}
                   for name, fields in rows.items()} for kind, rows in types.items()}


def version() -> str:
    return re.search(r"^project\(Lumeq VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE)[1]


def abi_number() -> int:
    return int(re.search(r"#define LUMEQ_ABI_NUMBER (\d+)", _header("lumeq.h"))[1])


def snapshot(build: Path, compiler: list[str]) -> dict:
    return {"version": version(), "abi": abi_number(), "exports": exports(build), "functions": functions(),
            "enumerations": enumerations(), "layouts": layouts(build, compiler)}
