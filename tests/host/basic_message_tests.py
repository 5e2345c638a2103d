"""The basic road's message: when it goes out, what it holds, and every byte of it on the wire."""

import os
import re
import unittest
from pathlib import Path
from unittest import mock

from support.basic_road_case import PATH, PROJECT, START, BasicRoadTestCase
from support import Outcome, call

UUID = r"[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}"


def messages(outcome: Outcome, severity: str) -> list[str]:
    return [line.message for line in outcome.log if line.severity == severity]


class BasicMessage(BasicRoadTestCase):
    ADDRESS = "127.0.0.21"

    def test_service_finds_nothing_wrong_with_it(self):
        with self.serve() as service:
            outcome = self.run_host(START)
        self.assertEqual(0, outcome.status)
        self.assertEqual([[]], [message.wrong for message in service.seen.messages])
        self.assertEqual(1, len(service.seen.connections))
        self.assertEqual([], messages(outcome, "WARNING"))
        self.assertEqual([], messages(outcome, "ERROR"))

    def test_fields_are_those_of_machine_application_and_settings(self):
        fields = self.fields_of_message()
        self.assertEqual("sys_info_base/1.1.0", fields["schema"])
        self.assertEqual("x64", fields["pc_architecture"])
        self.assertEqual("bit_64", fields["os_architecture"])
        self.assertEqual("Scan Studio/0.0.0.0", fields["app_id"])
        self.assertEqual("deployed-7", fields["app_deployed_id"])
        self.assertRegex(fields["app_deployed_uuid"], f"^{UUID}$")
        self.assertRegex(fields["app_session_uuid"], f"^{UUID}$")

    def fields_of_message(self, **settings) -> dict[str, str]:
        with self.serve() as service:
            self.run_host(START, **settings)
        return service.seen.messages[0].fields

    def test_language_is_the_systems_and_country_the_users(self):
        # Wine takes the system's locale from the one category and the user's from the other. The C library has to
        # know the names, and copies of its own plain locale will do.
        plain = Path("/usr/lib/locale/C.utf8")
        if not plain.exists():
            self.skipTest(f"there is no {plain} to make locales of")
        locales = self.folder / "locales"
        locales.mkdir()
        for name in ("de_DE.utf8", "fr_CA.utf8"):
            (locales / name).symlink_to(plain)
        with mock.patch.dict(os.environ, LOCPATH=str(locales), LC_CTYPE="de_DE.UTF-8", LC_MESSAGES="fr_CA.UTF-8"):
            os.environ.pop("LC_ALL", None)
            fields = self.fields_of_message()
        self.assertEqual(("de-DE", "CA"), (fields["os_language"], fields["os_country"]))

    def test_battery_is_there_if_the_kernel_lists_one(self):
        supplies = Path("/sys/class/power_supply").glob("*/type")
        listed = any(file.read_text().strip() == "Battery" for file in supplies)
        self.assertEqual(str(listed).lower(), self.fields_of_message()["pc_battery"])

    def check_wire(self, path: str = PATH, token: str = " token9", agent: str = "Scan Studio/0.0.0.0",
                   start: dict = START, **settings) -> str:
        """Returns the message as the log shows it."""
        with self.serve() as service:
            outcome = self.run_host(start, **settings)
        logged = self.logged_messages(outcome)
        self.assertEqual(1, len(logged))
        self.assertEqual([self.expected_request(logged[0], path, token, agent)],
                         [message.raw for message in service.seen.messages])
        self.assertIn(f"->{path} {logged[0]}", messages(outcome, "DATA"))
        return logged[0]

    def test_wire_of_an_ordinary_message(self):
        self.check_wire()

    def test_wire_of_a_message_with_characters_to_scrub(self):
        message = self.check_wire(AppDeployedId="a\tb\u00e9c\n\u20acd")
        self.assertIn('"app_deployed_id":"a b c  d"', message)

    def test_wire_of_identifiers_that_are_not_ascii(self):
        self.check_wire(path="/projects/P%20%e9%00%ac/queues/sys_info_base/messages", ProjectId="P \u00e9\u0100\u20ac")

    def test_wire_of_an_empty_token(self):
        self.check_wire(token="", AuthenticationToken=None)

    def test_wire_of_a_token_of_digits_is_unchanged(self):
        self.check_wire(token=" 0123456789", AuthenticationToken="0123456789")

    def test_wire_of_a_token_with_signs_is_rotated_in_its_letters_only(self):
        self.check_wire(token=" Az.-_~+/=9", AuthenticationToken="Nm.-_~+/=9")

    def test_name_with_blanks_stands_in_user_agent_and_app_id(self):
        message = self.check_wire(agent="A  b c/0.0.0.0", start=dict(START, appName="A  b c"))
        self.assertIn('"app_id":"A  b c/0.0.0.0"', message)

    def test_quotation_mark_and_backslash_arrive_escaped(self):
        message = self.check_wire(AppDeployedId='a"b\\c')
        self.assertIn(r'"app_deployed_id":"a\"b\\c"', message)

    def test_message_of_twenty_thousand_characters_arrives_whole(self):
        long = "".join(f"{number:04}" for number in range(5000))
        fields = self.fields_of_message(AppDeployedId=long)
        self.assertEqual(long, fields["app_deployed_id"])
        self.assertEqual(19, len(fields))

    def test_scheme_of_the_server_plays_no_part(self):
        self.check_wire(LUMServerUri=f"http://{self.ADDRESS}")
        self.check_wire(LUMServerUri=self.ADDRESS)

    def test_token_is_logged_rotated_and_as_it_goes_out_only(self):
        with self.serve():
            outcome = self.run_host(START)
        with_rotated = [line for line in outcome.log if "gbxra9" in line.message]
        self.assertEqual(["DEBUG"], [line.severity for line in with_rotated])
        self.assertRegex(with_rotated[0].message, r"^GetConfigFileData: .* authToken=gbxra9$")
        with_token = [line for line in outcome.log if "token9" in line.message]
        self.assertEqual(["DEBUG", "DATA"], [line.severity for line in with_token])
        self.assertEqual(f"PostMessageAndForget({self.ADDRESS}, Scan Studio/0.0.0.0, {PROJECT}, sys_info_base, "
                         "token9)", with_token[0].message)
        self.assertRegex(with_token[1].message, r"^ ->HTTP POST: .*Authorization: Bearer token9  ")


class BasicStart(BasicRoadTestCase):
    ADDRESS = "127.0.0.22"

    def test_second_start_sends_no_second_message(self):
        with self.serve() as service:
            self.run_host(START, START, call("ShutdownEx", timeoutMsec=10), START)
        self.assertEqual(1, len(service.seen.messages))
        self.assertEqual(1, len(service.seen.connections))

    def test_opting_in_sends_at_the_next_start(self):
        with self.serve() as service:
            self.run_host(START, call("SetUserOptInEx", userHasOptedIn=True), opted_in=False)
            self.assertEqual([], service.seen.connections)
            self.run_host(START, call("SetUserOptInEx", userHasOptedIn=True), START, opted_in=False)
        self.assertEqual(1, len(service.seen.messages))

    def test_installation_uuid_stays_and_session_uuid_changes(self):
        with self.serve() as service:
            self.run_host(START)
            first = self.local_settings_file.read_text()
            self.run_host(START, opted_in=None)
        one, two = (message.fields for message in service.seen.messages)
        self.assertEqual(one["app_deployed_uuid"], two["app_deployed_uuid"])
        self.assertNotEqual(one["app_session_uuid"], two["app_session_uuid"])
        self.assertRegex(first, f">{one['app_deployed_uuid']}</AppDeployedUuid>")
        self.assertEqual(first, self.local_settings_file.read_text())

    def test_cookie_of_the_service_is_kept_by_the_client_and_comes_back_from_the_next_process(self):
        answer = (b"HTTP/1.1 200 OK\r\nContent-Length: 4\r\nConnection: close\r\n"
                  b"Set-Cookie: seen=1; expires=Fri, 01-Jan-2038 00:00:00 GMT; path=/projects/cookies/\r\n\r\nhere")
        with self.serve(answers=(answer,)) as service:
            self.run_host(START, ProjectId="cookies")
            self.run_host(START, opted_in=None, ProjectId="cookies")
        first, second = (message.raw for message in service.seen.messages)
        self.assertNotIn(b"Cookie", first)
        self.assertEqual(1, second.count(b"\r\nCookie: seen=1\r\n"))

    def test_failing_managed_start_falls_back_on_the_message(self):
        with self.serve() as service:
            outcome = self.run_host(START, call("ScreenDisplayed", screenName="Home"), START, road="managed",
                                    companion={"raise": {"StartupInternal": "unknown", "PostEventInternal": "unknown"}})
        self.assertEqual([[]], [message.wrong for message in service.seen.messages])
        self.assertEqual(["StartupXX failed with unknown exception", "PostEventXX failed with unknown exception",
                          "StartupXX failed with unknown exception"], messages(outcome, "WARNING"))

    def test_managed_road_sends_none(self):
        with self.serve() as service:
            self.run_host(START, road="managed", companion={})
        self.assertEqual([], service.seen.connections)

    def test_missing_project_is_warned_of_and_opens_no_connection(self):
        for project in (None, "", "   "):
            with self.subTest(project), self.serve() as service:
                outcome = self.run_host(START, START, ProjectId=project)
                self.assertEqual([], service.seen.connections)
                self.assertEqual(["Project ID is empty. Ensure *LumeqConfig.xml is in path!"],
                                 messages(outcome, "WARNING"), "and not tried again")
                self.assertNotIn("AppDeployedUuid", self.local_settings_file.read_text())

    def test_missing_keys_but_the_project_are_empty(self):
        with self.serve() as service:
            self.run_host(START, AppDeployedId=None, AuthenticationToken=None)
        self.assertEqual([[]], [message.wrong for message in service.seen.messages])
        self.assertEqual("", service.seen.messages[0].fields["app_deployed_id"])
        self.assertEqual("", service.seen.messages[0].token)


class OptedOut(BasicRoadTestCase):
    ADDRESS = "127.0.0.23"

    NETWORK_CALLS = re.compile(r"trace:(?:wininet|winsock|dnsapi):(\w+) ")

    def network_calls(self, opted_in: bool) -> set[str]:
        """All that the host's process made in the platform's network libraries, but for their being loaded."""
        with mock.patch.dict(os.environ, WINEDEBUG="-all,trace+wininet,trace+winsock,trace+dnsapi"):
            outcome = self.run_host(START, START, call("FlushEx", timeoutMsec=10), call("ShutdownEx", timeoutMsec=10),
                                    opted_in=opted_in, LUMServerUri=self.ADDRESS)
        return set(self.NETWORK_CALLS.findall(outcome.errors)) - {"DllMain"}

    def test_opens_no_connection(self):
        with self.serve() as service:
            outcome = self.run_host(START, START, opted_in=False)
        self.assertEqual([], service.seen.connections)
        self.assertEqual([], messages(outcome, "DATA"))

    def test_makes_no_call_of_the_network_and_resolves_no_name(self):
        self.assertEqual(set(), self.network_calls(opted_in=False))
        self.assertLessEqual({"InternetOpenA", "InternetConnectW", "GetAddrInfoW", "connect"},
                             self.network_calls(opted_in=True), "these calls are seen where there are any")


if __name__ == "__main__":
    unittest.main()
