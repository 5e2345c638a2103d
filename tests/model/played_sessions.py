"""Plays a session on a machine of Wine's, and keeps what another run of it needs."""

import dataclasses
import json
import shutil
import tempfile
from pathlib import Path
from typing import Iterator, Optional, Union

import session_player
from call_history import prediction_of
from circumstances import SUBFOLDER, Circumstances, Session
from model_check import LEFTOVERS, SETTINGS_FILE, differences
from session_texts import OUTSIDE
from settings_files import FOLDER, SettingsFile
from support.host_process import HOST_SECONDS
from support.outcome import Outcome

FACTORY_FILE, NAMED_FACTORY_FILE = "LumeqConfig.xml", "lumeq-host.LumeqConfig.xml"
HOST_FILES = {"lumeq-host.exe", "Lumeq.dll", "LumeqC.dll", "LumeqShim.Managed.dll", "LumeqCompanion.json", "LumeqCompanion.jsonl",
              FACTORY_FILE, NAMED_FACTORY_FILE, "session.jsonl"}


def write(session: Session, folder: Path) -> session_player.Conditions:
    """Leaves the session's files in the folder, as far as tools/play takes such files."""
    circumstances = session.circumstances
    folder.mkdir(parents=True, exist_ok=True)

    def file(name: str, content: Union[str, bytes, None]) -> Optional[Path]:
        if content is None:
            return None
        (folder / name).write_bytes(content.encode() if isinstance(content, str) else content)
        return folder / name

    def settings_file(name: str, its: Optional[SettingsFile]) -> Optional[Path]:
        return file(name, its.content()) if its and its.defect != FOLDER else None

    file("session.jsonl", "".join(json.dumps(step) + "\n" for step in session.steps))
    file("circumstances.json", json.dumps(dataclasses.asdict(circumstances), indent=1) + "\n")
    failures = json.dumps({"raise": circumstances.failures}) if circumstances.failures else None
    return session_player.Conditions(
        road=circumstances.road, settings=settings_file("settings.xml", circumstances.settings),
        factory=settings_file("factory.xml", circumstances.factory_in_use), companion=file("companion.json", failures),
        without_companion=circumstances.without_companion, disabled=circumstances.disabled)


def read(folder: Path) -> Session:
    """What write left."""
    steps = [json.loads(line) for line in (folder / "session.jsonl").read_text(encoding="utf-8").split("\n") if line]
    circumstances = json.loads((folder / "circumstances.json").read_text(encoding="utf-8"))
    return Session(steps, Circumstances.from_json(circumstances))


def play(session: Session, machine: session_player.Machine, build: Path, keep: Optional[Path] = None) -> Outcome:
    """On the machine, cleared, or on one of its own where the registry has to differ.

    With `keep`, the session's files and results stay there.
    """
    if session.circumstances.disabled is not None:
        with session_player.machine(build) as its_own:
            return _play_on(its_own, session, build, keep)
    machine.clear()
    return _play_on(machine, session, build, keep)


def differences_of(session: Session, machine: session_player.Machine, build: Path,
                   keep: Optional[Path] = None) -> list[str]:
    """Plays the session. Returns how it differs from its prediction."""
    try:
        outcome = play(session, machine, build, keep)
        return differences(prediction_of(session, outcome), outcome)
    except json.JSONDecodeError as problem:
        return [f"the results cannot be read: {problem}"]


def _play_on(machine: session_player.Machine, session: Session, build: Path, keep: Optional[Path]) -> Outcome:
    outside = machine.prefix / "drive_c" / OUTSIDE
    shutil.rmtree(outside, ignore_errors=True)
    with tempfile.TemporaryDirectory(dir=machine.prefix) as name:
        folder = keep or Path(name)
        out = folder / "out"
        shutil.rmtree(out, ignore_errors=True)
        conditions = write(session, folder)
        with open(Path(name) / "errors", "w+b") as errors:
            machine.set_up(conditions, build)
            _make_settings(machine, session.circumstances)
            out.mkdir()
            status = machine.run_host(folder / "session.jsonl", conditions, out / "host.jsonl", HOST_SECONDS, errors)
            machine.collect(out)
            if outside.exists():
                shutil.copytree(outside, out / "drive" / OUTSIDE)
            leftovers = sorted(map(str, _leftovers(machine, outside)))
            if leftovers:
                (out / LEFTOVERS).write_text("\n".join(leftovers), encoding="utf-8")
            errors.seek(0)
            return Outcome(status, errors.read().decode("utf-8", "replace"), out)


def _make_settings(machine: session_player.Machine, circumstances: Circumstances) -> None:
    """Those that a machine is not set up with: missing, in another place, with other rights."""
    local, subfolder = ((folder / "LUMEQ" / SETTINGS_FILE) for folder in (machine.program_data,
                                                                          machine.program_data / SUBFOLDER))
    for path, file in ((machine.host_folder / FACTORY_FILE, circumstances.factory),
                       (machine.host_folder / NAMED_FACTORY_FILE, circumstances.named_factory),
                       (local, circumstances.settings), (subfolder, circumstances.subfolder_settings)):
        path.unlink(missing_ok=True)
        if file:
            file.make(path)


def _leftovers(machine: session_player.Machine, outside: Path) -> Iterator[Path]:
    """Files that nobody is to make."""
    for folder, names in ((machine.host_folder, HOST_FILES), (machine.program_data, {SETTINGS_FILE}),
                          (outside, {SETTINGS_FILE}), (machine.log_folder(), set(session_player.LOG_FILES))):
        if folder:
            yield from (file for file in folder.rglob("*") if file.is_file() and file.name not in names)
