"""How the arguments of a session are read, and how the log shows them."""

from typing import Any, Callable, Optional

from schema import Export
from wide_text import c_text, quoted, session_bytes, session_dictionary, session_text, wide

NULL_HANDLE, SET_HANDLE = "0" * 16, "F" * 16


def read_arguments(export: Export, step: dict) -> dict:
    """By their names. Texts as code units, dictionaries of them; None for null."""
    return {argument.name: READERS[argument.kind](step.get(argument.name)) for argument in export.arguments}


def shown_arguments(export: Export, arguments: dict, handle_is_set: bool) -> dict[str, str]:
    """By their names, and the numbers of enumerations as NAME_number."""
    texts = {}
    for argument in export.arguments:
        value = arguments[argument.name]
        if argument.kind == "enumeration":
            texts[argument.name] = argument.enumeration.text(value)
            texts[argument.name + "_number"] = str(value)
        elif argument.kind == "handle":
            texts[argument.name] = SET_HANDLE if handle_is_set else NULL_HANDLE
        else:
            texts[argument.name] = SHOWN[argument.kind](value)
    return texts


def _optional_text(form: Any) -> Optional[str]:
    return None if form is None else c_text(session_text(form))


def _optional_dictionary(form: Any) -> Optional[dict]:
    return None if form is None else session_dictionary(form)


def _features(form: dict) -> dict:
    return {wide(key): str(value).lower() for key, value in form.items()}


# How an argument is read from a session, by kind.
READERS: dict[str, Callable] = {
    "required": session_text,
    "optional": _optional_text,
    "model": _optional_text,
    "context": _optional_dictionary,
    "details": session_dictionary,
    "enumeration": int,
    "flag": bool,
    "byte": int,
    "number": int,
    "features": _features,
    "devices": lambda form: list(map(session_dictionary, form)),
    "handle": str,
    "narrow": session_bytes,
    "result": lambda form: "" if form is None else session_text(form),
}


def _count(dictionary: Any) -> str:
    return "(null)" if dictionary is None else f"[{len(dictionary)} item(s)]"


# How an argument is shown in the log, by kind.
SHOWN: dict[str, Callable] = {
    "required": quoted,
    "optional": quoted,
    "model": quoted,
    "context": _count,
    "details": _count,
    "flag": lambda flag: str(int(flag)),
    "byte": str,
    "number": str,
    "features": _count,
    "devices": _count,
    "narrow": lambda narrow: narrow.decode("latin-1"),
    "result": quoted,
}
