#!/usr/bin/env python3
"""Writes include/Lumeq/lumeq_table.h: the functions that lumeq.h declares, as a table.

  tools/c_table.py            writes it
  tools/c_table.py --print    prints it instead
"""

from c_interface import INCLUDE, Function, functions, write_or_print

TABLE = INCLUDE / "lumeq_table.h"


def no_op(function: Function) -> str:
    names = [name for _, name in function.parameters]
    if "buffer" in names:
        body = ["if (buffer != 0 && size > 0)", "    buffer[0] = 0;"]
        names = [name for name in names if name not in ("buffer", "size")]
    else:
        body = []
    body = [f"(void){name};" for name in names] + body
    if function.result != "void":
        body.append("return 0;")
    lines = "".join(f"    {line}\n" for line in body)
    return f"static inline {function.result} lumeq_no_{function.name}({function.parameter_list}) {{\n{lines}}}\n"


def table() -> str:
    all_functions = functions()
    fields = "".join(f"    {its.result} (*{its.name})({its.parameter_list});\n" for its in all_functions)
    no_ops = "".join(no_op(its) for its in all_functions)
    linked = "".join(f"    table->{its.name} = lumeq_{its.name};\n" for its in all_functions)
    none = "".join(f"    table->{its.name} = lumeq_no_{its.name};\n" for its in all_functions)
    found = "".join(f'    table->{its.name} = ({its.result} (*)({its.parameter_list}))find(library, "lumeq_{its.name}");\n'
                    f"    complete &= table->{its.name} != 0;\n" for its in all_functions)
    return f"""// clang-format off
// The functions of lumeq.h as a table, so that a host can do without the library. Written by tools/c_table.py.
#ifndef LUMEQ_LUMEQ_TABLE_H
#define LUMEQ_LUMEQ_TABLE_H

#include <Lumeq/lumeq.h>

#if defined(__cplusplus)
extern "C" {{
#endif

// Each field is the function of lumeq.h with that name.
typedef struct lumeq_table {{
{fields}}} lumeq_table;

// Functions that do nothing: they return zero and write empty texts.
{no_ops}
static inline void lumeq_table_set_no_ops(lumeq_table* table) {{
{none}}}

// The functions of the import library.
static inline void lumeq_table_set_linked(lumeq_table* table) {{
{linked}}}

typedef void (*lumeq_any_function)(void);

// The functions that `find` finds in `library`. Returns 0 if any is missing.
static inline int lumeq_table_set_found(lumeq_table* table, lumeq_any_function (*find)(void* library, const char* name),
                                        void* library) {{
    int complete = 1;
{found}    return complete;
}}

#if defined(__cplusplus)
}}
#endif

#endif
"""


if __name__ == "__main__":
    write_or_print(TABLE, table())
