"""Chromium without a window, driven over its debugging protocol by pipes."""

import base64
import fcntl
import itertools
import json
import os
import shutil
import subprocess
import tempfile
import time
from pathlib import Path
from typing import Any, Callable, Optional

PROGRAM = shutil.which("chromium")
OPTIONS = ("--headless=new", "--remote-debugging-pipe", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
           "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync",
           "--force-device-scale-factor=1", "--disable-dev-shm-usage")
SECONDS = 60
"""No answer takes as long, also on a busy machine."""


class Browser:
    """Runs from entry to exit of a with statement. It has one page."""

    def __enter__(self) -> "Browser":
        # Its other processes may write for a moment after the first has ended.
        self._profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        to_browser, self._out = os.pipe()
        self._in, from_browser = os.pipe()
        # It reads from descriptor 3 and writes to 4, which may be ends of these pipes.
        to_browser, from_browser = (_moved_up(end) for end in (to_browser, from_browser))
        command = ["bash", "-c", f'exec "$@" 3<&{to_browser} 4>&{from_browser} {to_browser}<&- {from_browser}>&-', "bash",
                   PROGRAM, *OPTIONS, f"--user-data-dir={self._profile.name}"]
        self._process = subprocess.Popen(command, pass_fds=(to_browser, from_browser), stdin=subprocess.DEVNULL,
                                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                         env=dict(os.environ, HOME=self._profile.name))
        os.close(to_browser)
        os.close(from_browser)
        self._ids = itertools.count(1)
        self._rest = b""
        self._session = ""
        self.events: list[dict] = []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self._session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(f"{domain}.enable")
        self.call("Page.setLifecycleEventsEnabled", enabled=True)
        return self

    def __exit__(self, *_) -> None:
        os.close(self._out)
        self._process.kill()
        self._process.wait()
        os.close(self._in)
        self._profile.cleanup()

    def call(self, method: str, **parameters) -> dict:
        """A command of the protocol. Raises RuntimeError if it fails."""
        number = next(self._ids)
        message = {"id": number, "method": method, "params": parameters}
        if self._session:
            message["sessionId"] = self._session
        os.write(self._out, json.dumps(message).encode() + b"\0")
        answer = self._wait(lambda its: its.get("id") == number)
        if "error" in answer:
            raise RuntimeError(f"{method}: {answer['error']}")
        return answer["result"]

    def _wait(self, is_wanted: Callable[[dict], bool]) -> dict:
        end = time.monotonic() + SECONDS
        while time.monotonic() < end:
            message = self._read()
            if "method" in message:
                self.events.append(message)
            if is_wanted(message):
                return message
        raise TimeoutError("the browser does not answer")

    def _read(self) -> dict:
        while b"\0" not in self._rest:
            more = os.read(self._in, 1 << 20)
            if not more:
                raise EOFError("the browser has ended")
            self._rest += more
        message, _, self._rest = self._rest.partition(b"\0")
        return json.loads(message)

    def open(self, page: Path, fragment: str = "") -> None:
        """Returns once the page is loaded and its script has run."""
        # A new fragment alone would not load it again.
        self._navigate("about:blank")
        self.events.clear()
        self._navigate(page.resolve().as_uri() + fragment)

    def _navigate(self, url: str) -> None:
        loader = self.call("Page.navigate", url=url)["loaderId"]

        def is_loaded(message: dict) -> bool:
            # An event of the page before it may still be on its way.
            return (message.get("method"), message.get("params", {}).get("loaderId"),
                    message.get("params", {}).get("name")) == ("Page.lifecycleEvent", loader, "load")
        if not any(map(is_loaded, self.events)):
            self._wait(is_loaded)

    def evaluate(self, expression: str) -> Any:
        """The value of a JavaScript expression; of a promise, what it becomes. Raises RuntimeError if it throws."""
        result = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"].get("exception", {}).get("description", "it throws"))
        return result["result"].get("value")

    def press(self, *keys: str) -> None:
        """Characters, or names as KeyboardEvent.key has them."""
        for key in keys:
            text = {"text": "\r" if key == "Enter" else key} if len(key) == 1 or key == "Enter" else {}
            code = {"Enter": 13, "Escape": 27, "Tab": 9, "ArrowDown": 40, "ArrowUp": 38}.get(key, 0)
            self.call("Input.dispatchKeyEvent", type="keyDown", key=key, windowsVirtualKeyCode=code, **text)
            self.call("Input.dispatchKeyEvent", type="keyUp", key=key, windowsVirtualKeyCode=code)

    def click(self, selector: str) -> None:
        x, y = self.evaluate(f"(() => {{ const element = document.querySelector({json.dumps(selector)});"
                             "element.scrollIntoView({ block: 'center' }); const box = element.getBoundingClientRect();"
                             "return [box.left + Math.min(box.width / 2, 20), box.top + box.height / 2]; })()")
        for kind in ("mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", clickCount=1)

    def show_as(self, width: int, height: int, scheme: str = "light") -> None:
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        self.call("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])

    def run_scripts(self, are_run: bool) -> None:
        self.call("Emulation.setScriptExecutionDisabled", value=not are_run)

    def screenshot(self, file: Path, clip: Optional[dict] = None) -> None:
        options = {"clip": {**clip, "scale": 1}} if clip else {}
        file.write_bytes(base64.b64decode(self.call("Page.captureScreenshot", format="png", **options)["data"]))

    def complaints(self) -> list[str]:
        """Of the page since it was opened: exceptions, refused scripts, and what it asked the network for."""
        self.evaluate("0")
        complaints = []
        for event in self.events:
            parameters = event.get("params", {})
            if event["method"] == "Runtime.exceptionThrown":
                complaints.append(parameters["exceptionDetails"].get("exception", {}).get("description", "exception"))
            elif event["method"] == "Log.entryAdded":
                complaints.append(parameters["entry"]["text"])
            elif event["method"] == "Network.requestWillBeSent" and parameters.get("type") != "Document":
                complaints.append("requested " + parameters["request"]["url"])
        return complaints


def _moved_up(descriptor: int) -> int:
    moved = fcntl.fcntl(descriptor, fcntl.F_DUPFD_CLOEXEC, 10)
    os.close(descriptor)
    return moved
