"""What lumeq doctor finds on a machine, without the network: each finding on a machine that is in that state."""

import json
import re
import shutil
import unittest
from pathlib import Path

from doctor_case import BUILD, COMPANION, HOST, ROOT, DoctorTestCase
from support import call
from support.host_process import HostProcess, program
import session_player

DOUBLE = BUILD / "double" / "Lumeq.dll"
MACHINE_OF_X64 = b"PE\0\0\x64\x86"
MACHINE_OF_I386 = b"PE\0\0\x4c\x01"


def make_32_bit(file: Path) -> None:
    content = file.read_bytes()
    assert content.count(MACHINE_OF_X64) == 1
    file.write_bytes(content.replace(MACHINE_OF_X64, MACHINE_OF_I386))


class Application(DoctorTestCase):
    def test_healthy_application(self):
        diagnosis = self.check_found(set(), "--only", "host,registry,choice,factory,local,runtime,wmi,log")
        self.assertEqual([r"C:\Host\Lumeq.dll, version 1.0.0.0"], diagnosis.details("host"))
        self.assertRegex(diagnosis.details("runtime")[1], "LumeqShim.Managed.dll, .* loads and has its eleven operations$")

    def test_32_bit_application(self):
        make_32_bit(self.host_folder / "lumeq-host.exe")
        diagnosis = self.check_found({"host-is-32-bit"}, "--only", "host")
        self.assertEqual(HOST, diagnosis.of("host-is-32-bit")["detail"])

    def test_library_that_is_missing_damaged_or_for_unit_tests(self):
        library = self.host_folder / "Lumeq.dll"
        shutil.copy(DOUBLE, library)
        self.check_found({"library-is-double"}, "--only", "host")
        library.write_bytes(library.read_bytes()[:100])
        self.check_found({"library-is-not-64-bit"}, "--only", "host")
        library.unlink()
        self.check_found({"library-missing"}, "--only", "host")

    def test_process_with_and_without_the_library(self):
        with HostProcess(self.machine, session_player.Conditions()) as host, \
                program(self.machine, "lumeq-hold-log-mutex.exe", "0"):
            host.play(call("FlushEx", timeoutMsec=1))
            numbers = self.process_numbers("lumeq-host.exe", "lumeq-hold-log-mutex.exe")
            loaded = self.check_found(set(), "--pid", numbers["lumeq-host.exe"], "--only", "host", host=None)
            self.assertEqual([r"C:\Host\Lumeq.dll, version 1.0.0.0"], loaded.details("host"))
            self.assertEqual((HOST, int(numbers["lumeq-host.exe"])), (loaded.report["host"], loaded.report["processId"]))
            self.check_found({"library-not-loaded"}, "--pid", numbers["lumeq-hold-log-mutex.exe"], "--only", "host",
                             host=None)

    def process_numbers(self, *names: str) -> dict[str, str]:
        with program(self.machine, "lumeq-process-numbers.exe", *names) as listing:
            return dict(line.split(" ") for line in listing.stdout.read().splitlines())

    def test_application_that_does_not_exist(self):
        result = self.run_doctor(r"C:\Host\nothing.exe")
        self.assertEqual((2, "", "lumeq: C:\\Host\\nothing.exe: there is no such file\n"),
                         (result.returncode, result.stdout, result.stderr))
        self.assertEqual(2, self.run_doctor("--pid", "999999").returncode)

    def test_without_an_application(self):
        self.check_found({"factory-not-examined"}, host=None)


class Files(DoctorTestCase):
    """Several findings of independent checks at once, because starting the program takes longest."""

    def test_policy_and_a_user_who_has_declined(self):
        self.set_registry(r"HKCU\Software\Zuvan\NG\Tracking\Lumeq", "TrackingDisabled", "1", "REG_DWORD")
        self.write_local(UserOptIn="false")
        diagnosis = self.check_found({"tracking-disabled", "choice-is-no"}, "--only", "registry,choice")
        self.assertEqual("tracking-disabled", diagnosis.report["blocker"], "the first of two")

    def test_no_files(self):
        (self.host_folder / "LumeqConfig.xml").unlink()
        self.local_file.unlink()
        diagnosis = self.check_found({"choice-missing", "factory-missing"}, "--only", "choice,factory,local,log")
        self.assertEqual(r"neither C:\Host\lumeq-host.LumeqConfig.xml nor C:\Host\LumeqConfig.xml",
                         diagnosis.of("factory-missing")["detail"])
        self.assertEqual(["the log is off, because there are no settings"], diagnosis.details("log"))

    def test_pause_that_a_killed_application_left_in_a_file_that_cannot_be_written(self):
        with HostProcess(self.machine, session_player.Conditions()) as host:
            host.play(call("Pause"))
        self.local_file.chmod(0o444)
        diagnosis = self.check_found({"pause-left", "local-read-only"}, "--only", "choice,local")
        self.assertEqual("the user had agreed before the pause", diagnosis.of("pause-left")["detail"])

    def test_files_that_are_not_well_formed(self):
        self.write_factory(text="<LumeqConfig version='4.0'>")
        self.local_file.write_text("<LumeqConfig", encoding="utf-8")
        diagnosis = self.check_found({"factory-refused", "local-damaged"}, "--only", "choice,factory,local,log")
        self.assertEqual(r"C:\Host\LumeqConfig.xml: Error parsing factory settings file",
                         diagnosis.of("factory-refused")["detail"])
        self.assertEqual(r"C:\ProgramData\Zuvan\LUMEQ\LumeqLocalSettings.xml: Error parsing local settings file",
                         diagnosis.of("local-damaged")["detail"])

    def test_factory_file_of_a_wrong_version_and_a_local_file_that_cannot_be_opened(self):
        self.write_factory(text="<LumeqConfig version='3.0'/>")
        self.local_file.unlink()
        self.local_file.mkdir()
        diagnosis = self.check_found({"factory-refused", "local-unreadable"}, "--only", "choice,factory,local")
        self.assertEqual(r"C:\Host\LumeqConfig.xml: Factory settings version mismatch; expected: '4.0', actual: '3.0'",
                         diagnosis.of("factory-refused")["detail"])

    def test_factory_file_without_values(self):
        self.write_factory(text="<LumeqConfig version='4.0'/>")
        self.write_local(UserOptIn="yes")
        diagnosis = self.check_found({"choice-invalid", "project-missing", "server-missing", "token-missing"},
                                     "--only", "choice,factory,network,log")
        self.assertEqual('UserOptIn is "yes"', diagnosis.of("choice-invalid")["detail"])

    def test_factory_file_with_odd_values_beside_a_shared_one(self):
        self.write_factory("lumeq-host.LumeqConfig.xml", ProjectId="P 1", LUMServerUri="https://localhost/api",
                           AppDeployedId="\u00e9\t", projectId="x", UserOptIn="True", AuthenticationToken="gbx ra9",
                           Log="yes", LogLevel="all")
        diagnosis = self.check_found({"factory-shadowed", "project-odd", "server-cut", "token-unprintable",
                                      "deployed-id-scrubbed", "key-unknown", "log-setting-invalid"},
                                     "--only", "factory,log")
        self.assertEqual(r"C:\Host\LumeqConfig.xml is not used", diagnosis.of("factory-shadowed")["detail"])
        self.assertEqual('LUMServerUri is "https://localhost/api", the server\'s name is "api"',
                         diagnosis.of("server-cut")["detail"])
        self.assertEqual("a token of 7 characters", diagnosis.of("token-unprintable")["detail"])
        self.assertEqual(['"projectId"', '"UserOptIn"'], diagnosis.details("factory")[-2:])
        self.assertEqual('Log "yes", LogLevel "all"', diagnosis.of("log-setting-invalid")["detail"])

    def test_key_that_is_there_twice_and_a_server_without_a_name(self):
        self.write_factory(
            text='<LumeqConfig version="4.0"><ProjectId>one</ProjectId><LUMServerUri>https://localhost/</LUMServerUri>'
                 '<AuthenticationToken>gbxra9</AuthenticationToken><ProjectId>two</ProjectId><Log>on</Log>'
                 '<LogLevel>debug</LogLevel></LumeqConfig>')
        diagnosis = self.check_found({"key-twice", "server-unusable", "log-on"}, "--only", "factory,network,log")
        self.assertIn("project one", diagnosis.details("factory"))
        self.assertRegex(diagnosis.of("log-on")["detail"], r"^level DEBUG, in C:\\users\\.*\\Zuvan\\LUMEQ$")

    def test_folder_that_is_not_open_to_all_beside_others(self):
        self.local_file.parent.chmod(0o755)
        folder = self.machine.program_data / "Scan" / "LUMEQ"
        folder.mkdir(parents=True)
        folder.chmod(0o777)
        shutil.copy(self.local_file, folder)
        diagnosis = self.check_found({"local-not-shared", "local-elsewhere"}, "--only", "local")
        self.assertEqual(r"C:\ProgramData\Zuvan\LUMEQ", diagnosis.of("local-not-shared")["detail"])
        self.assertEqual("subfolder Scan", diagnosis.of("local-elsewhere")["detail"])
        self.assertEqual(r"C:\ProgramData\Zuvan\Scan\LUMEQ\LumeqLocalSettings.xml",
                         self.check_found(set(), "--only", "local", "--subfolder", "Scan").details("local")[0])

    def test_folder_that_the_library_makes_is_open_to_all(self):
        shutil.rmtree(self.machine.program_data)
        with HostProcess(self.machine, session_player.Conditions(road="basic")) as host:
            host.play(call("SetUserOptInEx", userHasOptedIn=True))
        self.check_found(set(), "--only", "local,choice")


class Runtime(DoctorTestCase):
    def check_runtime(self, finding: str, *arguments: str, **environment: str) -> str:
        """Returns the detail."""
        return self.check_found({finding}, "--only", "runtime", *arguments, **environment).of(finding)["detail"]

    @property
    def companion(self) -> Path:
        return self.host_folder / COMPANION

    def test_missing_runtime(self):
        self.assertEqual("mscoree.dll is missing or too old",
                         self.check_runtime("runtime-missing", LUMEQ_WINE_OVERRIDES="mscoree=d"))

    def test_companion_that_is_missing_or_of_another_processor(self):
        make_32_bit(self.companion)
        self.check_runtime("companion-is-not-64-bit")
        self.companion.unlink()
        self.assertEqual(rf"C:\Host\{COMPANION}", self.check_runtime("companion-missing"))

    def test_companion_that_does_not_load(self):
        shutil.copy(BUILD / "tests" / "OddCompanion.dll", self.companion)
        self.assertIn("The companion library could not be loaded: error 1114",
                      self.check_runtime("companion-does-not-load", LUMEQ_TEST_LOADING="refuse"))
        self.assertIn("the process ended with 0xc0000005",
                      self.check_runtime("companion-crashes", LUMEQ_TEST_LOADING="crash"))
        self.assertIn("loading took more than 500 ms",
                      self.check_runtime("companion-crashes", "--seconds", "0.5", LUMEQ_TEST_LOADING="hang"))
        unloaded = self.check_found(set(), "--only", "runtime", "--no-load", LUMEQ_TEST_LOADING="crash")
        self.assertIn("not loaded", unloaded.details("runtime")[1])

    def test_companion_without_operations(self):
        content = self.companion.read_bytes()
        self.companion.write_bytes(content.replace(b"\0FlushInternal\0", b"\0FlushExternal\0"))
        self.assertEqual(rf"C:\Host\{COMPANION} lacks FlushInternal", self.check_runtime("companion-lacks-operation"))
        # Another library has none of them, and the report names those of the header.
        header = (ROOT / "include" / "Lumeq" / "LumeqRecords.h").read_text()
        declared = re.findall(r"^using (\w+Internal) =", header, re.MULTILINE)
        shutil.copy(BUILD / "Lumeq.dll", self.companion)
        self.assertEqual(declared, self.check_runtime("companion-lacks-operation").split(" lacks ")[1].split(", "))


class Wmi(DoctorTestCase):
    LOCATOR = r"HKLM\Software\Classes\CLSID\{4590F811-1D3A-11D0-891F-00AA004B2E24}\InprocServer32"

    def test_wmi_that_does_not_answer(self):
        diagnosis = self.check_found({"wmi-silent"}, "--only", "wmi", LUMEQ_WINE_OVERRIDES="wbemprox=d")
        self.assertEqual("unknown", json.loads(diagnosis.report["message"]["text"])["os_name"])

    def test_wmi_that_is_slow_or_hangs(self):
        shutil.copy(BUILD / "tests" / "SlowWmi.dll", self.machine.prefix / "drive_c")
        self.machine.run_program("reg", "add", self.LOCATOR, "/ve", "/d", r"C:\SlowWmi.dll", "/f")
        self.addCleanup(self.machine.run_program, "reg", "add", self.LOCATOR, "/ve", "/d",
                        r"C:\windows\system32\wbem\wbemprox.dll", "/f")
        self.check_found({"wmi-slow"}, "--only", "wmi", "--seconds", "60", LUMEQ_TEST_WMI="250")
        hanging = self.check_found({"wmi-hangs"}, "--only", "wmi", "--seconds", "0.5", LUMEQ_TEST_WMI="250")
        self.assertEqual("no answer within 500 ms", hanging.of("wmi-hangs")["detail"])


class Log(DoctorTestCase):
    def test_file_in_the_place_of_the_folder(self):
        temporary = next(self.machine.prefix.glob("drive_c/users/*/**/Temp"))
        shutil.rmtree(temporary / "Zuvan", ignore_errors=True)
        (temporary / "Zuvan").touch()
        self.addCleanup((temporary / "Zuvan").unlink)
        self.write_factory(Log="date", LogDate="31.12.2037")
        diagnosis = self.check_found({"log-setting-invalid", "log-has-no-folder"}, "--only", "log")
        self.assertEqual('LogDate "31.12.2037"', diagnosis.of("log-setting-invalid")["detail"])

    def test_mutex_that_is_held(self):
        with program(self.machine, "lumeq-hold-log-mutex.exe", "60000") as holder:
            holder.stdin.write("\n")
            holder.stdin.flush()
            self.assertTrue(holder.stdout.readline().startswith("held"))
            # Wine does not name the owner.
            self.assertEqual("by a process that the system does not name",
                             self.check_found({"log-mutex-held"}, "--only", "log").of("log-mutex-held")["detail"])


class Help(DoctorTestCase):
    def setUp(self):
        pass

    def test_every_finding_is_in_the_document_and_has_a_test(self):
        table = self.run_doctor("--list").stdout.rstrip("\n")
        self.assertIn(table, (ROOT / "docs" / "doctor.md").read_text(encoding="utf-8"))
        names = re.findall(r"^\| `([\w-]+)` \|", table, re.MULTILINE)
        tests = "".join(file.read_text(encoding="utf-8") for file in Path(__file__).parent.glob("*_tests.py"))
        self.assertEqual([], [name for name in names if f'"{name}"' not in tests])
        self.assertEqual(len(set(names)), len(names))

    def test_help_has_examples_and_the_exit_codes(self):
        text = self.run_doctor("--help").stdout
        self.assertIn("lumeq doctor --pid 4711 --json", text)
        self.assertIn("The exit code is 1 if", text)
        self.assertNotIn("load-companion", text)

    def test_wrong_command_line(self):
        for arguments in (["a.exe", "--pid", "1"], ["--only", "nothing"], ["--seconds", "0"]):
            with self.subTest(arguments):
                self.assertEqual(2, self.run_doctor(*arguments).returncode)


if __name__ == "__main__":
    unittest.main()
