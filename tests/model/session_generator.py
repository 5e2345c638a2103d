"""Makes sessions of a seed: any export with any argument, in any order, under any circumstances."""

import random
from typing import Any, Callable, Optional

from circumstances import Circumstances, Session
from file_generator import FileGenerator
from log_model import Log
from schema import EXPORTS, PATTERNS, Argument, Export
from session_texts import (ASKS_FOR_LETTERS, BAD_BIIDS, BAD_SUBFOLDERS, BASIC_SUBFOLDERS, BESIDE, BIID, FORBIDDEN,
                           NAMES, ODD, SEEDS, STRANGE, SUBFOLDERS, TAKE_ANY_BLOCK, UNITS, WORDS)
from unicode_blocks import BLOCKS, ROW
from wide_text import characters, has_unpaired, spelled, wide

FIXED_SEEDS = range(131, 155)
"""Of the sessions that the tests play."""

INT32_EXTREMES = (-2147483648, 2147483647)
OPERATIONS = ["Startup", "Shutdown", "Flush", "GetUserOptIn", "SetUserOptIn", "SetLocalValue", "LocalSettingsSubfolder",
              "PostEvent", "PostData", "TrackPrintQueueInfo", "TrackSystemInformation"]
KINDS = ["vesto", "com", "std", "unknown", "managed"]

THREADS = 8
TASKS = 8
"""Of each thread."""

SPOILED_KINDS = {"required", "optional", "model", "enumeration", "number", "narrow", "buffer", "size"}


class SessionGenerator:
    def __init__(self, seed: int):
        self._random = random.Random(seed)
        self._loads = 0
        self._is_loaded = True
        self._blocks: list[int] = []

    def session(self, decks: int = 4) -> Session:
        """`decks`: how often each export is called, at least."""
        circumstances = self._circumstances()
        self._road = circumstances.road
        steps: list[dict] = []
        for _ in range(decks):
            deck = [*EXPORTS.values(), EXPORTS["StartupEx"]]
            self._random.shuffle(deck)
            for export in deck:
                steps += self._between()
                step = self._call(export)
                steps.append({"threads": [[step]]} if self._chance(0.02) else step)
        if self._is_loaded and self._shows_all_calls(circumstances) and self._chance(0.4):
            steps += self._many_tasks()
        return Session(steps, circumstances)

    def _chance(self, probability: float) -> bool:
        return self._random.random() < probability

    def _one(self, *choices: Any) -> Any:
        return self._random.choice(choices)

    # Circumstances

    def _circumstances(self) -> Circumstances:
        road = self._one("managed", "managed", "basic")
        failures = {}
        if road == "managed" and self._chance(0.4):
            for operation in self._random.sample(OPERATIONS, self._random.randint(1, len(OPERATIONS))):
                failures[operation + "Internal"] = self._failures()
        files = FileGenerator(self._random, self._block_text)
        named = files.factory() if self._chance(0.15) else None
        return Circumstances(
            road=road, factory=files.factory(is_used=named is None), named_factory=named,
            settings=files.local(0.03, road == "basic"), subfolder_settings=files.local(0.4, road == "basic"),
            failures=failures,
            without_companion=road == "managed" and self._chance(0.12),
            disabled=self._one(0, 1, 1, 2, -1) if self._chance(0.06) else None)

    def _failures(self) -> Any:
        """Always, or of some calls only."""
        if self._chance(0.5):
            return self._one(*KINDS)
        return [self._one(None, None, *KINDS) for _ in range(self._random.randint(2, 6))]

    @staticmethod
    def _shows_all_calls(circumstances: Circumstances) -> bool:
        """Whether the log has a line of each call, so that it shows the order of several threads."""
        return circumstances.disabled != 1 and Log(circumstances).takes("TRACE")

    # Steps

    def _between(self) -> list[dict]:
        steps: list[dict] = []
        if not self._is_loaded and self._chance(0.3):
            steps.append({"load": True})
            self._is_loaded = True
            self._loads += 1
        elif self._is_loaded and self._chance(0.003):
            steps.append({"unload": True})
            self._is_loaded = False
        if self._chance(0.01):
            steps.append({"times": self._random.randint(0, 3),
                          "calls": [self._call(self._one(*EXPORTS.values())) for _ in range(2)]})
        if self._chance(0.005):
            steps.append({"sleepMsec": self._random.randint(0, 20)})
        return steps

    def _many_tasks(self) -> list[dict]:
        """Threads open tasks that other threads complete, all of which are open at the same time."""
        opened = [[f"{thread}.{number}-{self._loads}" for number in range(TASKS)] for thread in range(THREADS)]
        names = self._random.choices([name for name in EXPORTS if name.endswith("Initiated")], k=THREADS * TASKS)
        names = [name.removesuffix("Initiated") for name in names]
        tasks = dict(zip(sum(opened, []), names))
        return [
            self._threads([[{**self._call(EXPORTS[tasks[handle] + "Initiated"], "good"), "handle": handle}
                            for handle in handles] for handles in opened]),
            self._threads([[{**self._call(EXPORTS[tasks[handle] + "Completed"]), "taskHandle": handle}
                            for handle in handles] for handles in self._random.sample(opened, THREADS)])]

    def _threads(self, lists: list[list[dict]]) -> dict:
        """With a first call that says whose thread it is, and some calls that share nothing but the library."""
        others = [export for export in EXPORTS.values() if export.family not in ("initiated", "completed")]
        threads = []
        for number, calls in enumerate(lists):
            calls = [*calls, *(self._call(self._one(*others)) for _ in range(3))]
            self._random.shuffle(calls)
            threads.append([{"call": "ScreenDisplayed", "screenName": f"Thread{number}"}, *calls])
        return {"threads": threads}

    def _call(self, export: Export, care: str = "") -> dict:
        # Most calls are such that what they do can be seen.
        care = care or self._one("good", "good", "good", "near", "near", "near", "any")
        spoilable = [argument.name for argument in export.arguments if argument.kind in SPOILED_KINDS]
        spoiled = self._random.sample(spoilable, min(len(spoilable), self._one(1, 1, 2, 3)))
        step: dict[str, Any] = {"call": export.name}
        self._task = export.name.removesuffix("Completed").removesuffix("Initiated")
        for argument in export.arguments:
            its_care = "near" if care == "near" and argument.name in spoiled else "any" if care == "any" else "good"
            make: Callable = getattr(self, "_" + argument.kind)
            value = make(argument, its_care)
            if value is not None or argument.kind == "buffer" or self._chance(0.5):
                step[argument.name] = value
        if export.family == "initiated":
            step["handle"] = self._handle_name()
        return {name: value for name, value in step.items() if value is not Omitted}

    def _handle_name(self) -> str:
        # A task does not outlive the library that it belongs to.
        task = self._one("Any", "DeviceConfig", "ScanAcquire") if self._chance(0.15) else self._task
        return f"{task}{self._one(1, 1, 1, 2)}-{self._loads}"

    # Texts

    def _length(self) -> int:
        return self._one(2, 50, 127, 128, 129, 260, 1000, self._random.randint(3800, 4110), 5000, 20000,
                         100000 if self._chance(0.2) else 300)

    def _text(self, pattern: str, care: str) -> str:
        alphabet = ODD if pattern in ASKS_FOR_LETTERS else STRANGE
        text = self._one(*SEEDS[pattern])
        if care == "good":
            return self._taken(pattern)
        if self._chance(0.6):
            return self._one(*BESIDE[pattern])
        if care == "any" and self._chance(0.3):
            text = "".join(self._random.choices(alphabet, k=self._random.randint(0, 12)))
        if self._chance(0.25):
            text += self._one(*UNITS.get(pattern, WORDS[:4]), *("ab", "x ")) * self._length()
        for _ in range(self._random.choice((0, 1, 1, 2)) if len(text) < 200 else self._random.choice((0, 1))):
            text = self._changed(text, alphabet)
        return text

    def _taken(self, pattern: str) -> str:
        """A text that the rule takes; it may still be refused by a stricter one."""
        texts = [text for text in SEEDS[pattern] if PATTERNS[pattern].matches(text)]
        text = self._one(*texts)
        if pattern in TAKE_ANY_BLOCK and self._chance(0.2):
            # A letter first, because what counts as a space differs.
            text = "x" + self._block_text()
        elif pattern == "url" and self._chance(0.2):
            text = f"https://{self._block_text()}/a"
        if self._chance(0.04):
            text = text + self._one(*UNITS.get(pattern, ["a"])) * self._length()
        return text if PATTERNS[pattern].matches(text) else self._one(*texts)

    def _block_text(self) -> str:
        """Of some of Unicode's blocks. All come before any comes again."""
        text = ""
        for _ in range(self._random.randint(1, 4)):
            if not self._blocks:
                self._blocks = self._random.sample(BLOCKS, len(BLOCKS))
            text += wide(chr(self._blocks.pop() + self._random.randrange(ROW)))
        return text

    def _changed(self, text: str, alphabet: list[str]) -> str:
        at = self._random.randint(0, len(text))
        odd = self._one(*alphabet)
        return self._one(text + odd, odd + text, text[:at] + odd + text[at:], text[:at] + odd + text[at + 1:],
                         text[:at] + text[at + 1:], text.upper() if text.isascii() else text, text + text[:1], odd)

    def _required(self, argument: Argument, care: str) -> Any:
        if argument.pattern == "subpath":
            return spelled(self._subpath(care))
        return spelled(self._text(argument.pattern, care))

    def _optional(self, argument: Argument, care: str) -> Any:
        if self._chance(0.35):
            return None
        return self._required(argument, care)

    def _model(self, argument: Argument, care: str) -> Any:
        return self._required(argument, care)

    def _subpath(self, care: str) -> str:
        if care == "good":
            return self._one(*SUBFOLDERS, *(BASIC_SUBFOLDERS if self._road == "basic" else []))
        if self._chance(0.3):
            return self._one(*BAD_SUBFOLDERS)
        text = self._one(*SUBFOLDERS, "x" * self._length())
        at = self._random.randint(0, len(text))
        return text[:at] + self._one(*FORBIDDEN) + text[at:]

    # Other values

    def _enumeration(self, argument: Argument, care: str) -> int:
        if care == "good":
            return self._random.randrange(len(argument.enumeration.texts))
        return self._one(self._random.randint(-2, 70), self._random.randint(-2, 70), self._random.randint(-2, 14),
                         self._one(*INT32_EXTREMES))

    def _number(self, argument: Argument, care: str) -> int:
        return self._one(0, 1, 7, 250, INT32_EXTREMES[1]) if care == "good" else self._one(-1, -70, *INT32_EXTREMES)

    def _flag(self, argument: Argument, care: str) -> bool:
        return self._chance(0.5)

    def _byte(self, argument: Argument, care: str) -> int:
        return self._one(0, 0, 1, 1, 2, 128, 255)

    def _handle(self, argument: Argument, care: str) -> str:
        return self._handle_name()

    def _free_text(self) -> str:
        if self._chance(0.02):
            return self._one("x", "ab", "\ud83d\ude00", "\n") * self._length()
        if self._chance(0.2):
            return self._block_text()
        return self._one("", "value", *NAMES, "".join(self._random.choices(STRANGE, k=self._random.randint(0, 5))))

    def _dictionary(self, keys: list[str], care: str) -> Any:
        pairs = [(self._one(*keys, self._free_text()), self._free_text()) for _ in range(self._one(0, 1, 2, 3, 5))]
        if self._chance(0.02):
            pairs += [(f"key {number}", self._block_text()) for number in range(self._one(50, 500, 1000))]
        if self._chance(0.5) and not any(has_unpaired(key) for key, _ in pairs):
            return {characters(key): spelled(value) for key, value in pairs}
        return [[spelled(key), spelled(value)] for key, value in pairs]

    def _context(self, argument: Argument, care: str) -> Any:
        if self._chance(0.5):
            return None
        return self._dictionary(["a", "b", "", "schema", "_dev_modelname", "_app_event_task_guid"], care)

    def _details(self, argument: Argument, care: str) -> Any:
        return self._dictionary(["a", "b", "", "schema", "moniker", "Schema"], care)

    def _features(self, argument: Argument, care: str) -> dict:
        keys = ["deskew", "auto crop", "", "\u6f22", "\U0001f600", "a\0b", "schema"]
        return {key: self._chance(0.5) for key in self._random.sample(keys, self._random.randint(0, len(keys)))}

    def _devices(self, argument: Argument, care: str) -> list:
        return [self._device(care) for _ in range(self._random.randint(0, 5))]

    def _device(self, care: str) -> Any:
        if self._chance(0.1):
            return {}
        device = self._dictionary(["dev_modelname", "dev_connection", "DEV_BIID", " dev_biid"], care)
        pairs = list(device.items()) if isinstance(device, dict) else device
        if not self._chance(0.05):
            bad = self._one(*BAD_BIIDS, self._free_text())
            pairs = [*pairs, ["dev_biid", spelled(bad if self._chance(0.25) else self._one("unknown", BIID, "f" * 64))]]
        return [list(pair) for pair in pairs]

    def _narrow(self, argument: Argument, care: str) -> Any:
        good = self._one("1c852a4d-b800-1f08-abcd-3c52821f9ab0", "x", "%s%n\"", "\u00e9\u6f22",
                         {"units": [128, 255, 228]}, {"repeat": "ab", "times": self._length()})
        zeros = ({"units": [0]}, {"units": [0, 97]}, {"units": [97, 98, 0, 99]})
        return good if care == "good" else self._one("", *zeros, ["a\n", {"repeat": "b", "times": 5000}], good)

    def _result(self, argument: Argument, care: str) -> Any:
        return self._one("", "before", spelled(self._free_text()))

    def _buffer(self, argument: Argument, care: str) -> Any:
        return self._one(Omitted, "before", "x" * 255, "", Omitted if care == "good" else None)

    def _size(self, argument: Argument, care: str) -> Any:
        return self._one(Omitted, 256, 200) if care == "good" else self._one(0, 1, 3, 4, 7, 8, 40, 64, 65, 255, 256)


class Omitted:
    """Marks an argument that the session leaves out."""


def session_of(seed: int, decks: int = 4) -> Session:
    return SessionGenerator(seed).session(decks)
