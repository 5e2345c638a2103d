"""A model of the two roads: what the companion is asked to do, and what the library does to the settings itself."""

from typing import Callable, Optional

from circumstances import Circumstances
from log_model import Log
from machine_model import Companion, Document, Failure, SettingsFiles, factory_failure

OPT_IN, BEFORE_PAUSE = "UserOptIn", "OptinBeforePause"


class Delivery:
    def __init__(self, circumstances: Circumstances, log: Log):
        self._circumstances = circumstances
        self._log = log
        self._factory_failure = factory_failure(circumstances)
        self.files = SettingsFiles(circumstances)
        self.companion = Companion(circumstances, self.files)
        self.restart()

    def restart(self) -> None:
        """The library was loaded again; the companion was never gone."""
        self._subfolder = ""
        self._message_sent = False
        self._left: Optional[Document] = None
        """What an operation that failed leaves to the next one, which does not read the file again."""

    def ask(self, region: str, operation: str, **members) -> bool:
        """Whether the companion did it."""
        if self._circumstances.road == "basic":
            return False
        failure = self.companion.ask(region, operation, **members)
        if failure:
            self._warn(failure)
        return not failure

    def start(self, **members) -> None:
        if self.ask("StartupXX", "Startup", **members):
            return
        if self.flag(OPT_IN) and not self._message_sent:
            self._message_sent = True
            self._warn("Project ID is empty. Ensure *LumeqConfig.xml is in path!")

    def use_subfolder(self, path: str) -> None:
        if self._circumstances.road == "managed":
            if not self.ask("LocalSubfolderPathXX", "LocalSettingsSubfolder", path=path):
                return
            self.companion.use_subfolder(path)
        self._subfolder = path

    def opt_in(self) -> bool:
        if self._circumstances.road == "basic":
            return self.flag(OPT_IN)
        if not self.ask("GetUserOptInXX", "GetUserOptIn"):
            return False
        try:
            return self.companion.read(OPT_IN).lower() == "true"
        except Failure as failure:
            self._warn(failure.line("GetUserOptInXX"))
            return False

    def set_opt_in(self, value: bool) -> None:
        self._store("SetUserOptInXX", OPT_IN, value, self.ask("SetUserOptInXX", "SetUserOptIn", userHasOptedIn=value))

    def pause(self) -> None:
        value = self.flag(OPT_IN)
        self._store("SetLocalValue", BEFORE_PAUSE, value,
                    self.ask("SetLocalValue", "SetLocalValue", key=BEFORE_PAUSE, value=str(value)))
        self.set_opt_in(False)

    def end_pause(self) -> None:
        if self.flag(BEFORE_PAUSE):
            self.set_opt_in(True)
        self._with_file("BasicClearOptIn", lambda document: self._remove(document, BEFORE_PAUSE))

    def flag(self, key: str) -> bool:
        return self._with_file("BasicGetUserOptIn", lambda document: document.text(key).lower() == "true")

    def has_flag(self, key: str) -> bool:
        return self._with_file("BasicDidUserOpted", lambda document: document.text(key).lower() in ("true", "false"))

    def set_flag(self, key: str, value: bool) -> None:
        def change(document: Document) -> bool:
            document.write(key, str(value))
            self._save(document)
            return True

        self._with_file("BasicSetUserOptIn", change)

    def _store(self, region: str, key: str, value: bool, asked: bool) -> None:
        """What the companion was asked to store it stores, or else the library does."""
        if asked:
            try:
                self.companion.write(key, str(value))
                return
            except Failure as failure:
                self._warn(failure.line(region))
        self.set_flag(key, value)

    def _remove(self, document: Document, key: str) -> bool:
        element = document.find(key)
        if element:
            document.elements.remove(element)
            self._save(document)
        return element is not None

    def _save(self, document: Document) -> None:
        if document.root == "LUMConfig":
            document.root = "LumeqConfig"
        self.files.save(self._subfolder, document)

    def _load(self) -> Document:
        if self._factory_failure:
            raise Failure(self._factory_failure)
        return self.files.load(self._subfolder)

    def _with_file(self, region: str, work: Callable[[Document], bool]) -> bool:
        """Without a readable factory file the local one cannot be reached either."""
        try:
            document = self._left or self._load()
            self._left = document
            result = work(document)
            self._left = None
            return result
        except Failure as failure:
            self._warn(failure.line(region))
            return False

    def _warn(self, message: str) -> None:
        self._log.write("WARNING", "", message)
