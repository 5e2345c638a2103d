"""Settings files that are missing, damaged, of another encoding, huge, or written to do harm."""

import contextlib
import socket
import time
import unittest
from pathlib import Path
from typing import Iterator

from support.host_process import HostProcess
from support.places import PlacedTestCase, warning, warnings_of
from support import call, error, record

from session_player import Conditions

HOME = call("ScreenDisplayed", screenName="Home")
HOME_RECORD = record("app", "displayed", "screen", "/Home")
START = call("StartupEx", appName="App", whyType=4, howType=7, trackSystemInfo=True, trackPrintQueueInfo=False)
REFUSED = call("ScreenDisplayed", screenName="")
REFUSAL = error("ScreenDisplayed", 'invalid [REQUIRED] screenName arg: ""')
READ = call("GetUserOptInEx")
OPT_OUT = call("SetUserOptInEx", userHasOptedIn=False)
FACTORY = '<LumeqConfig version="4.0"><Log>on</Log><LogLevel>warning</LogLevel></LumeqConfig>'
OPTED_IN = '<LumeqConfig version="4.0"><UserOptIn>True</UserOptIn></LumeqConfig>'
ROOT = '<LumeqConfig version="4.0">'
BILLION_LAUGHS = ('<!DOCTYPE LumeqConfig [<!ENTITY a0 "lol">'
                  + "".join(f'<!ENTITY a{i} "{f"&a{i - 1};" * 10}">' for i in range(1, 10)) + "]>")
FIFTY_MEGABYTES = 50_000_000
USUAL_MEGABYTES = 100
"""More than a host needs with small files, and less than what any of the entities would take."""


def with_padding(settings: str) -> str:
    """The settings come last."""
    return settings.replace(ROOT, f"{ROOT}<Padding>{'x' * FIFTY_MEGABYTES}</Padding>")


def hostile(settings: str, server: str) -> dict[str, str]:
    """Well-formed files that hold the settings as well. The server is one that nobody must ask."""
    def entity(declaration: str) -> str:
        return f"<!DOCTYPE LumeqConfig [{declaration}]>" + settings.replace(ROOT, f"{ROOT}<More>&x;</More>")

    return {
        "document type": "<!DOCTYPE LumeqConfig>" + settings,
        "external document type": f'<!DOCTYPE LumeqConfig SYSTEM "http://{server}/a.dtd">{settings}',
        "external entity of the network": entity(f'<!ENTITY x SYSTEM "http://{server}/a">'),
        "external entity of the machine": entity('<!ENTITY x SYSTEM "file:///C:/windows/win.ini">'),
        "parameter entity": f'<!DOCTYPE LumeqConfig [<!ENTITY % x SYSTEM "http://{server}/a"> %x;]>{settings}',
        "billion laughs": BILLION_LAUGHS + settings.replace(ROOT, f"{ROOT}<More>&a9;</More>"),
        "quadratic blow-up": entity(f'<!ENTITY x "{"y" * 50_000}">').replace("&x;", "&x;" * 50_000),
    }


def unreadable(settings: str) -> dict[str, str]:
    return {"empty": "", "blank": " \r\n", "cut short": settings[:-3], "no XML": "settings", "two roots": settings * 2,
            "deep": settings.replace(ROOT, ROOT + "<a>" * 100_000)}


def encodings(settings: str) -> dict[str, bytes]:
    return {"UTF-8 with a mark": b"\xef\xbb\xbf" + settings.encode(),
            "UTF-16": b"\xff\xfe" + settings.encode("utf-16-le"),
            "UTF-16, the other way round": b"\xfe\xff" + settings.encode("utf-16-be"),
            "Latin-1": ('<?xml version="1.0" encoding="ISO-8859-1"?><!--Größe-->' + settings).encode("latin-1")}


@contextlib.contextmanager
def unasked_server(test: unittest.TestCase) -> Iterator[str]:
    with socket.create_server(("127.0.0.1", 0)) as listener:
        yield "127.0.0.1:%d" % listener.getsockname()[1]
        listener.setblocking(False)
        with test.assertRaises(BlockingIOError, msg="somebody asked the server"):
            listener.accept()


class SettingsFileTestCase(PlacedTestCase):
    """Logging has begun with a good factory file, so that the failures can be read."""

    @contextlib.contextmanager
    def running(self, road: str = "basic") -> Iterator[HostProcess]:
        start = self.machine.prefix / "opted-in.xml"
        start.write_text(OPTED_IN)
        factory = self.machine.prefix / "factory.xml"
        factory.write_text(FACTORY)
        with self.live(Conditions(road=road, settings=start, factory=factory)) as session:
            session.play(HOME)
            yield session

    def refuse(self, file: Path, contents: dict[str, str], reason: str) -> None:
        """Each of the contents. The reason has room for its name."""
        due = []
        with self.running() as session:
            good = file.read_bytes()
            for name, content in contents.items():
                file.write_text(content, newline="")
                with self.subTest(name):
                    started = time.monotonic()
                    self.assertFalse(session.play(READ)["returns"])
                    session.play(OPT_OUT)
                    self.assertLess(time.monotonic() - started, 10)
                    self.assertEqual(content, file.read_bytes().decode())
                due += [warning(f"{operation} exception with {reason.format(name)}")
                        for operation in ("BasicGetUserOptIn", "BasicDidUserOpted", "BasicSetUserOptIn")]
            self.assertLess(session.peak_memory(), USUAL_MEGABYTES)
            file.write_bytes(good)
            self.assertTrue(session.play(READ)["returns"])
        self.assertEqual(due, warnings_of(session.outcome))


class FactoryFile(SettingsFileTestCase):
    @property
    def file(self) -> Path:
        return self.machine.host_folder / "LumeqConfig.xml"

    def test_hostile_one_is_refused_in_no_time_and_nothing_is_fetched(self):
        with unasked_server(self) as server:
            self.refuse(self.file, hostile(FACTORY, server), "Error parsing factory settings file")

    def test_damaged_one_is_refused(self):
        self.refuse(self.file, unreadable(FACTORY), "Error parsing factory settings file")

    def test_one_of_another_version_is_refused_with_both(self):
        self.refuse(self.file, {actual: FACTORY.replace("4.0", actual) for actual in ("4.1", "4", "4.0 ", "v4.0", "")},
                    "Factory settings version mismatch; expected: '4.0', actual: '{}'")

    def test_what_refers_to_others_without_a_document_type_is_read_and_nothing_is_fetched(self):
        with unasked_server(self) as server, self.running() as session:
            url = f"http://{server}/a"
            for reference in (f'<?xml-stylesheet href="{url}" type="text/xsl"?>{FACTORY}',
                              FACTORY.replace(ROOT, f'{ROOT}<include xmlns="http://www.w3.org/2001/XInclude" '
                                                    f'href="{url}"/>'),
                              FACTORY.replace("<Log>", f'<Log xmlns:i="http://www.w3.org/2001/XMLSchema-instance" '
                                                       f'i:noNamespaceSchemaLocation="{url}">')):
                self.file.write_text(reference)
                self.assertTrue(session.play(READ)["returns"])
        self.assertEqual([], warnings_of(session.outcome))

    def test_may_have_any_encoding_that_xml_knows(self):
        with self.running() as session:
            for name, content in encodings(FACTORY).items():
                with self.subTest(name):
                    self.file.write_bytes(content)
                    self.assertTrue(session.play(READ)["returns"])
        self.assertEqual([], warnings_of(session.outcome))

    def test_missing_one_and_a_folder_in_its_place_are_reported(self):
        with self.running() as session:
            self.file.unlink()
            self.assertFalse(session.play(READ)["returns"])
            self.file.mkdir()
            self.assertFalse(session.play(READ)["returns"])
        self.assertEqual([warning("BasicGetUserOptIn exception with No factory settings file found"),
                          warning("BasicGetUserOptIn exception with Error parsing factory settings file")],
                         warnings_of(session.outcome))

    def test_host_that_never_had_a_good_one_is_served_without_log_and_settings(self):
        for content in (None, "", BILLION_LAUGHS + FACTORY):
            for road, records in (("managed", [HOME_RECORD]), ("basic", [])):
                with self.subTest(content=content and content[:20], road=road):
                    with self.live(Conditions(road=road)) as session:
                        self.file.unlink()
                        if content is not None:
                            self.file.write_text(content)
                        for step in (START, HOME, call("Pause"), call("ShutdownEx", timeoutMsec=0)):
                            session.play(step)
                        self.assertFalse(session.play(READ)["returns"])
                    self.assertEqual(records, session.outcome.records)
                    self.assertEqual(set(), {*session.outcome.files} - {"host.jsonl", "companion.jsonl",
                                                                        *self.companions_own(road)})

    @staticmethod
    def companions_own(road: str) -> set[str]:
        return {"LumeqLocalSettings.xml"} if road == "managed" else set()

    def test_one_of_fifty_megabytes_is_read_to_its_end_in_some_seconds(self):
        for road, records in (("managed", [HOME_RECORD]), ("basic", [])):
            with self.subTest(road):
                factory = self.machine.prefix / "huge.xml"
                factory.write_text(with_padding(FACTORY))
                with self.live(Conditions(road=road, factory=factory)) as session:
                    started = time.monotonic()
                    for step in (HOME, START, REFUSED):
                        session.play(step)
                    self.assertLess(time.monotonic() - started, 60)
                    self.assertLess(session.peak_memory(), 500)
                self.assertEqual(records, session.outcome.records)
                self.assertEqual([REFUSAL], session.outcome.calls)


class LocalFile(SettingsFileTestCase):
    @property
    def file(self) -> Path:
        return self.machine.settings_file

    def test_hostile_one_is_refused_in_no_time_left_alone_and_nothing_is_fetched(self):
        with unasked_server(self) as server:
            self.refuse(self.file, hostile(OPTED_IN, server), "Error parsing local settings file")

    def test_damaged_one_is_refused_and_left_alone(self):
        self.refuse(self.file, unreadable(OPTED_IN), "Error parsing local settings file")

    def test_may_have_any_encoding_that_xml_knows(self):
        with self.running() as session:
            for name, content in encodings(OPTED_IN).items():
                with self.subTest(name):
                    self.file.write_bytes(content)
                    self.assertTrue(session.play(READ)["returns"])
                    session.play(OPT_OUT)
                    self.assertIn(OPTED_IN.replace("True", "False"), self.file.read_bytes().decode("utf-8-sig"))
        self.assertEqual([], warnings_of(session.outcome))

    def test_folder_in_its_place_is_reported(self):
        with self.running() as session:
            self.file.unlink()
            self.file.mkdir()
            self.assertFalse(session.play(READ)["returns"])
            session.play(OPT_OUT)
            self.file.rmdir()
        self.assertEqual([warning(f"{operation} exception with Error parsing local settings file")
                          for operation in ("BasicGetUserOptIn", "BasicDidUserOpted", "BasicSetUserOptIn")],
                         warnings_of(session.outcome))

    def test_one_of_fifty_megabytes_is_read_to_its_end_in_some_seconds(self):
        with self.running() as session:
            self.file.write_text(with_padding(OPTED_IN))
            started = time.monotonic()
            self.assertTrue(session.play(READ)["returns"])
            self.assertLess(time.monotonic() - started, 30)
            self.assertLess(session.peak_memory(), 500)


if __name__ == "__main__":
    unittest.main()
