"""The bundle for support: complete, readable by others, and without secrets. And the machine is as it was."""

import base64
import hashlib
import json
import re
import shutil
import unittest
import zipfile
from pathlib import Path

from doctor_case import BUILD, HOST, PROJECT, UUID, DoctorTestCase
from support import call
from support.host_process import HostProcess
import session_player

DEVICE = "secret-device-serial"
SECRETS = ("gbxra9", "token9", UUID, DEVICE, "secret-user", "secret@example.org")
PLAYED = (call("StartupEx", appName="Scan Studio", whyType=4, howType=7, trackSystemInfo=True, trackPrintQueueInfo=False),
          call("GetBiid", deviceUuid=DEVICE), call("ScreenDisplayed", screenName="Home", flow="C:\\Users\\secret-user\\x"),
          call("SetGlobalContextEx", globalContext="secret@example.org"))


class Bundle(DoctorTestCase):
    def test_bundle_has_report_settings_and_logs_and_no_secret(self):
        self.write_factory(Log="on", LogLevel="debug")
        self.write_factory("lumeq-host.LumeqConfig.xml", Log="on", LogLevel="debug")
        with HostProcess(self.machine, session_player.Conditions(road="basic")) as host:
            for step in PLAYED:
                host.play(step)
        log = (self.machine.log_folder() / "Lumeq.Log.txt").read_text(encoding="utf-8")
        for secret in SECRETS:
            self.assertIn(secret, log, "a secret that is nowhere proves nothing")
        encoded = re.search(r"json\.b64\?=([A-Za-z0-9+/=]{100,})", log)[1]

        self.run_doctor(HOST, "--only", "registry,wmi", "--bundle", r"C:\Host\for-support.zip")
        with zipfile.ZipFile(self.host_folder / "for-support.zip") as bundle:
            self.assertIsNone(bundle.testzip())
            members = {name: bundle.read(name).decode("utf-8") for name in bundle.namelist()}
        self.assertEqual(["report.json", "settings/lumeq-host.LumeqConfig.xml", "settings/LumeqConfig.xml",
                          "settings/LumeqLocalSettings.xml", "log/Lumeq.Log.txt", "log/Lumeq.Data.txt",
                          "log/Lumeq.Error.txt"], list(members))
        machine_uuid = re.search(r'"sys_uuid":"([^"]+)"', log)[1]
        for name, content in members.items():
            for secret in (*SECRETS, machine_uuid, encoded[:40]):
                self.assertNotIn(secret.lower(), content.lower(), name)
        self.assertEqual(f"https://{self.SERVER}/projects/{PROJECT}/queues/sys_info_base/messages",
                         json.loads(members["report.json"])["message"]["url"])
        self.assertIn("<UserOptIn xml:space='preserve'>True</UserOptIn>", members["settings/LumeqLocalSettings.xml"])
        # Everything else is as it was, line by line.
        self.assertEqual(log.count("\n"), members["log/Lumeq.Log.txt"].count("\n"))
        self.assertIn("HttpSendRequest failed", members["log/Lumeq.Log.txt"])

    def test_of_a_long_log_the_end_is_kept_from_a_whole_line_on(self):
        folder = self.machine.log_folder() or self.make_log_folder()
        (folder / "Lumeq.Log.txt").write_text("".join(f"line {number:07}\n" for number in range(500_000)))
        self.run_doctor(HOST, "--only", "registry", "--bundle", r"C:\Host\for-support.zip")
        with zipfile.ZipFile(self.host_folder / "for-support.zip") as bundle:
            lines = bundle.read("log/Lumeq.Log.txt").decode().splitlines()
        self.assertEqual("line 0499999", lines[-1])
        self.assertRegex(lines[0], r"^line \d{7}$")
        self.assertGreater(4 * 1024 * 1024, 13 * len(lines))
        self.assertLess(4 * 1024 * 1024 - 14, 13 * len(lines))

    def make_log_folder(self) -> Path:
        folder = next(self.machine.prefix.glob("drive_c/users/*/**/Temp")) / "Zuvan" / "LUMEQ"
        folder.mkdir(parents=True)
        return folder

    def test_settings_in_utf_16_are_masked_too(self):
        (self.host_folder / "LumeqConfig.xml").write_bytes(
            '<?xml version="1.0" encoding="utf-16"?><LumeqConfig version="4.0"><AuthenticationToken>gbxra9'
            '</AuthenticationToken></LumeqConfig>'.encode("utf-16"))
        self.run_doctor(HOST, "--only", "registry", "--bundle", r"C:\Host\for-support.zip")
        with zipfile.ZipFile(self.host_folder / "for-support.zip") as bundle:
            content = bundle.read("settings/LumeqConfig.xml").decode("utf-8")
        self.assertIn("<AuthenticationToken>***</AuthenticationToken>", content)

    def test_bundle_that_cannot_be_written(self):
        result = self.run_doctor(HOST, "--only", "registry", "--bundle", r"C:\nowhere\for-support.zip")
        self.assertEqual((2, "lumeq: C:\\nowhere\\for-support.zip cannot be written\n"), (result.returncode, result.stderr))


class Unchanged(DoctorTestCase):
    def test_machine_is_as_it_was(self):
        """Also one on which nothing of the library's exists: no folder, no file, no key."""
        for state in ("healthy", "new"):
            with self.subTest(state):
                if state == "new":
                    self.remove_all_of_the_library()
                self.run_doctor("--list")
                before = self.state()
                diagnosis = self.examine("--seconds", "1")
                self.assertIn("message", diagnosis.report, "it has looked at everything")
                after = self.state()
                self.assertEqual(before.keys(), after.keys())
                self.assertEqual([], [name for name in before if before[name] != after[name]])

    def remove_all_of_the_library(self) -> None:
        shutil.rmtree(self.machine.program_data)
        if logs := self.machine.log_folder():
            shutil.rmtree(logs.parent)

    def state(self) -> dict[str, str]:
        """All files with their times, and the registry, which the server writes when it ends."""
        session_player.stop_wine(self.machine.prefix)
        files = {}
        for file in sorted((self.machine.prefix / "drive_c").rglob("*")):
            if not file.is_symlink():
                content = hashlib.sha256(file.read_bytes()).hexdigest() if file.is_file() else ""
                files[str(file)] = f"{file.stat().st_mtime_ns} {file.stat().st_mode} {content}"
        for name in ("user.reg", "system.reg"):
            text = (self.machine.prefix / name).read_text(encoding="latin-1")
            # Without the times at which keys were opened for writing, without what Wine's services write about devices and
            # about itself whenever they get to it, and without the stores that the system makes when it first checks a
            # certificate.
            text = re.sub(r"^#time=.*\n|(?<=\]) \d+$", "", text, flags=re.MULTILINE)
            for key in text.split("\n\n"):
                if key.startswith("[Software") and not re.match(r"\[Software\\\\(Wine|Microsoft\\\\SystemCertificates)", key):
                    files[f"{name} {key.splitlines()[0]}"] = key
        return files


if __name__ == "__main__":
    unittest.main()
