#!/usr/bin/env python3
"""Writes bindings/node/raw.js: the functions, structs and constants of lumeq.h, as koffi takes them.

  tools/node_binding.py            writes it
  tools/node_binding.py --print    prints it instead
"""

import re

from c_interface import ROOT, Function, Struct, enumerations, functions, header, structs, write_or_print

RAW = ROOT / "bindings" / "node" / "raw.js"

POINTERS = {"const wchar_t*": "str16", "wchar_t*": "uint16_t *", "const char*": "str"}


def koffi_type(its_type: str) -> str:
    if its_type in POINTERS:
        return POINTERS[its_type]
    if its_type.endswith("*") and not its_type.startswith("const "):
        return "_Inout_ " + its_type.removesuffix("*").strip() + " *"
    if its_type.endswith("*"):
        return its_type.removeprefix("const ").removesuffix("*").strip() + " *"
    return "uint64_t" if its_type == "lumeq_task" else its_type


def struct_text(struct: Struct) -> str:
    fields = "".join(f"    {name}: '{koffi_type(its_type)}',\n" for its_type, name in struct.fields)
    return f"koffi.struct('{struct.name}', {{\n{fields}}});\n"


def function_text(function: Function) -> str:
    parameters = ", ".join(f"{koffi_type(its_type)} {name}" for its_type, name in function.parameters)
    return (f"    {function.name}: library.func('{koffi_type(function.result)} lumeq_{function.name}"
            f"({parameters})'),\n")


def raw() -> str:
    rows = "".join(
        f"exports.{its.name} = Object.freeze({{\n"
        + "".join(f"    {row.lower()}: {value},\n" for row, value in its.rows.items()) + "});\n"
        for its in enumerations())
    abi = re.search(r"#define LUMEQ_ABI_NUMBER (\d+)", header())[1]
    return ("// The functions, structs and constants of lumeq.h, as koffi takes them. Written by tools/node_binding.py.\n"
            "'use strict';\n\nconst koffi = require('koffi');\n\n"
            + "".join(map(struct_text, structs()))
            + "\n// Each function is that of lumeq.h with this name.\n"
            + "exports.functions = library => ({\n" + "".join(map(function_text, functions())) + "});\n\n"
            + f"exports.abi_number = {abi};\n" + rows)


if __name__ == "__main__":
    write_or_print(RAW, raw())
