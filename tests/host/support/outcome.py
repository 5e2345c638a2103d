"""What playing a session left, and the records to expect."""

import json
from pathlib import Path
from typing import Optional

from .log_lines import LogLine, lines_of, parse_log


def record(actor: str, action: str, object_: str, label: str, details: Optional[dict] = None,
           local: Optional[dict] = None, model: Optional[str] = None) -> dict:
    """An event's record with all its keys."""
    return {
        "schema": "app_eventinfo/2.0.1",
        "app_event_actor": actor,
        "app_event_action": action,
        "app_event_object": object_,
        "app_event_object_label": label,
        "app_event_context": {
            "schema": "app_event_context/1.0.0",
            "context_global": {"_dev_modelname": model},
            "context_local": local,
        },
        "app_event_details": details,
    }


class Outcome:
    """The host's exit code, its output, and all files of the folder that collected them."""

    def __init__(self, status: int, errors: str, folder: Path):
        self.status = status
        # Wine's own helper processes share the host's standard error and may complain there; a crash of the host
        # shows in its exit code.
        self.errors = "".join(line for line in errors.splitlines(keepends=True) if not line.startswith("wine: "))
        """The host's standard error."""
        self.files = {str(file.relative_to(folder)): file.read_bytes()
                      for file in folder.rglob("*") if file.is_file()}
        self.host = self._json_lines("host.jsonl")
        self.companion = self._json_lines("companion.jsonl")

    def text(self, name: str) -> str:
        return self.files.get(name, b"").decode("utf-8")

    def _json_lines(self, name: str) -> list[dict]:
        return [json.loads(line) for line in lines_of(self.text(name))]

    @property
    def log(self) -> list[LogLine]:
        return parse_log(self.text("Lumeq.Log.txt"))

    @property
    def error_file(self) -> list[LogLine]:
        return parse_log(self.text("Lumeq.Error.txt"))

    @property
    def calls(self) -> list[LogLine]:
        """The log without the lines about the log's own policy."""
        return [line for line in self.log if not line.message.startswith("Logger: ")]

    @property
    def records(self) -> list[dict]:
        """Those of the events that reached the companion."""
        return [line["record"] for line in self.companion if line["operation"] == "PostEventInternal"]
