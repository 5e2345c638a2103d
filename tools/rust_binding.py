#!/usr/bin/env python3
"""Writes what bindings/rust/src takes from lumeq.h: raw.rs, its functions and structs, and vocabulary.rs, its
enumerations.

  tools/rust_binding.py            writes both
  tools/rust_binding.py --print    prints them instead
"""

from c_interface import ROOT, Enumeration, Function, Struct, enumerations, functions, structs, write_or_print

SOURCES = ROOT / "bindings" / "rust" / "src"
WRITTEN_BY = "Written by tools/rust_binding.py."

PLAIN = {"int32_t": "i32", "uint32_t": "u32", "uint64_t": "u64", "size_t": "usize", "wchar_t": "u16", "char": "c_char"}


def rust_type(its_type: str) -> str:
    if its_type.endswith("*"):
        target = its_type.removesuffix("*").strip()
        constant = target.startswith("const ")
        return f"*{'const' if constant else 'mut'} {rust_type(target.removeprefix('const '))}"
    return PLAIN.get(its_type, its_type)


def rust_name(name: str) -> str:
    return f"r#{name}" if name == "type" else name


def nothing(its_type: str) -> str:
    if its_type.endswith("*"):
        return "std::ptr::null()"
    return "0" if its_type in PLAIN else f"{its_type}::default()"


def function_text(function: Function) -> str:
    parameters = ", ".join(f"{rust_name(name)}: {rust_type(its_type)}" for its_type, name in function.parameters)
    result = "" if function.result == "void" else f" -> {rust_type(function.result)}"
    return f"    pub fn lumeq_{function.name}({parameters}){result};\n"


def struct_text(struct: Struct) -> str:
    fields = "".join(f"    pub {rust_name(name)}: {rust_type(its_type)},\n" for its_type, name in struct.fields)
    values = "".join(
        f"            {rust_name(name)}: {'std::mem::size_of::<Self>()' if name == 'size' else nothing(its_type)},\n"
        for its_type, name in struct.fields)
    return (f"#[repr(C)]\n#[derive(Clone, Copy)]\npub struct {struct.name} {{\n{fields}}}\n\n"
            f"impl Default for {struct.name} {{\n    fn default() -> Self {{\n        Self {{\n{values}        }}\n"
            "    }\n}\n\n")


def raw() -> str:
    return (f"// The functions and structs of lumeq.h. {WRITTEN_BY}\n"
            "#![allow(dead_code, non_camel_case_types)]\n\nuse std::os::raw::c_char;\n\npub type lumeq_task = u64;\n\n"
            + "".join(map(struct_text, structs()))
            + '#[link(name = "LumeqC")]\nextern "C" {\n' + "".join(map(function_text, functions())) + "}\n")


def camel(name: str) -> str:
    return "".join(part.capitalize() for part in name.split("_"))


def enumeration_text(enumeration: Enumeration) -> str:
    rows = "".join(f"{'    #[default]' + chr(10) if value == 0 else ''}    {camel(row)} = {value},\n"
                   for row, value in enumeration.rows.items())
    return (f"/// `enum lumeq_{enumeration.name}` of lumeq.h.\n#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]\n"
            f"#[repr(i32)]\npub enum {camel(enumeration.name)} {{\n{rows}}}\n")


def vocabulary() -> str:
    return f"// The enumerations of lumeq.h. {WRITTEN_BY}\n\n" + "\n".join(map(enumeration_text, enumerations()))


if __name__ == "__main__":
    write_or_print(SOURCES / "raw.rs", raw())
    write_or_print(SOURCES / "vocabulary.rs", vocabulary())
