"""Random sessions as they can be played over lumeq.h, whose texts end at their first zero character."""

from typing import Any

from circumstances import Session


def _without_zeros(form: Any) -> Any:
    if isinstance(form, str):
        return form.replace("\0", "\1")
    if isinstance(form, list):
        return [_without_zeros(part) for part in form]
    if isinstance(form, dict):
        return {_without_zeros(key): [unit or 1 for unit in value] if key == "units" else _without_zeros(value)
                for key, value in form.items()}
    return form


def _patient(steps: list[dict]) -> list[dict]:
    """A shutdown drops the events that still wait after its timeout."""
    changed = []
    for step in steps:
        step = dict(step)
        if "times" in step:
            step["calls"] = _patient(step["calls"])
        elif "threads" in step:
            step["threads"] = list(map(_patient, step["threads"]))
        elif step.get("call") == "ShutdownEx" and step["timeoutMsec"] >= 0:
            step["timeoutMsec"] = max(step["timeoutMsec"], 600_000)
        changed.append(step)
    return changed


def over_c(session: Session, has_worker: bool) -> Session:
    """The session with another control character for each zero. With the worker thread, which keeps the library for some seconds, also
    without freeing it, and with time for each shutdown."""
    steps = _without_zeros(session.steps)
    if has_worker:
        # The model distinguishes calls of threads that run at once by the thread that logs them.
        steps = [step for step in steps if len(step.get("threads", ())) < 2]
        steps = _patient([step for step in steps if not {"load", "unload"} & step.keys()])
    return Session(steps, session.circumstances)
