"""Discovered printers, and the identifiers made of their UUIDs."""

import hashlib
import hmac
import unittest

from support import API, LogLine, SessionTestCase, call, error, trace

GOOD_BIID = "0123456789abcdef" * 4
UUID = "1c852a4d-b800-1f08-abcd-3c52821f9ab0"

# The key of development builds. Its characters are the key as they stand.
KEY = b"0123456789abcdef" * 8


def biid(device_uuid: bytes) -> str:
    return hmac.new(KEY, device_uuid, hashlib.sha256).hexdigest()


def found(*devices: dict) -> dict:
    return call("TrackDiscoveredPrintersEx", discoveredDeviceList=list(devices))


def found_line(count: int) -> LogLine:
    return trace("TrackDiscoveredPrintersEx", f"discoveredDeviceList: [{count} item(s)]")


def skipped(reason: str) -> LogLine:
    return LogLine("WARNING", API + "TrackDiscoveredPrintersEx", "skipping discovered device with " + reason)


NO_INFORMATION = skipped("no information (empty dictionary)")


def sent(device: dict) -> dict:
    return {"operation": "PostDataInternal", "dataType": "sys_printer_discoverylist", "data": device}


class DiscoveredPrinters(SessionTestCase):
    def test_empty_list_is_counted_and_sends_nothing(self):
        outcome = self.play_to_end(found())
        self.assertEqual([found_line(0)], outcome.calls)
        self.assertEqual([], outcome.companion)

    def test_every_good_device_is_a_record_of_its_own_in_the_order_of_the_list(self):
        devices = [{"dev_biid": biid_text, "place": place} for biid_text, place in (
            (GOOD_BIID, "1"), ("unknown", "2"), ("0" * 64, "3"), ("f" * 64, "4"), ("unknown", "5"))]
        outcome = self.play_to_end(found(*devices))
        self.assertEqual([sent(device) for device in devices], outcome.companion)
        self.assertEqual([found_line(5)], outcome.calls)

    def test_fields_go_out_as_they_came(self):
        device = {"dev_biid": "unknown", "": "no name", "no text": "", "DEV_BIID": "bad", " dev_biid": "Größe 漢字 \U0001F600",
                  "dev_connection": "wifi\n\t\"\\", "schema": "mine", "_dev_modelname": "mine"}
        self.assertEqual([sent(device)], self.play_to_end(found(device)).companion)

    def test_device_whose_identifier_has_another_form_is_skipped(self):
        identifiers = [GOOD_BIID.replace("a", "A", 1), GOOD_BIID[:63], GOOD_BIID + "0", "g" * 64, "Unknown", "UNKNOWN",
                       "unknown ", " unknown", "", "unknown" + GOOD_BIID, "a \"quoted\" one"]
        good = {"dev_biid": "unknown"}
        outcome = self.play_to_end(found(*({"dev_biid": identifier} for identifier in identifiers), good),
                                   found({"dev_biid": "unknown\n"}))
        self.assertEqual([found_line(12), *(skipped(f'invalid BIID: "{identifier}"') for identifier in identifiers),
                          found_line(1), skipped('invalid BIID: "unknown\\n"')], outcome.calls)
        self.assertEqual([sent(good)], outcome.companion)
        self.assertEqual([], outcome.error_file)

    def test_empty_device_is_skipped_and_one_without_identifier_ends_the_list(self):
        good, never_seen = {"dev_biid": GOOD_BIID, "place": "second"}, {"dev_biid": GOOD_BIID, "place": "last"}
        outcome = self.play_to_end(found({}, good, {"dev_modelname": "Model 5"}, never_seen), found(never_seen))
        missing = error("TrackDiscoveredPrintersEx", "invalid unordered_map<K, T> key", title="Exception")
        self.assertEqual([found_line(4), NO_INFORMATION, missing, found_line(1)], outcome.calls)
        self.assertEqual([missing], outcome.error_file)
        self.assertEqual([sent(good), sent(never_seen)], outcome.companion)

    def test_basic_road_looks_at_the_list_and_sends_nothing(self):
        outcome = self.play_to_end(found({"dev_biid": "unknown"}, {}, {"dev_biid": "bad"}, {"other": "x"}, {}), road="basic")
        self.assertEqual([found_line(5), NO_INFORMATION, skipped('invalid BIID: "bad"'),
                          error("TrackDiscoveredPrintersEx", "invalid unordered_map<K, T> key", title="Exception")],
                         outcome.calls)
        self.assertEqual({"host.jsonl", "Lumeq.Log.txt", "Lumeq.Error.txt"}, set(outcome.files))


class DeviceIdentifiers(SessionTestCase):
    def identifiers(self, *texts) -> list[str]:
        outcome = self.play_to_end(*(call("GetBiid", deviceUuid=text, biid="before") for text in texts))
        self.assertEqual([], outcome.error_file)
        return [line["returns"] for line in outcome.host]

    def test_are_keyed_hashes_in_small_letters(self):
        outcome = self.play_to_end(call("GetBiid", deviceUuid=UUID, biid="before"))
        self.assertEqual([{"call": "GetBiid", "returns": biid(UUID.encode())}], outcome.host)
        self.assertRegex(outcome.host[0]["returns"], "^[0-9a-f]{64}$")
        self.assertEqual([trace("GetBiid", f'deviceUuid: "{UUID}"'),
                          trace("GetBiid", f'...returns biid: "{biid(UUID.encode())}"')], outcome.calls)

    def test_are_of_the_bytes_as_they_are_given(self):
        texts = [UUID.upper(), "{" + UUID + "}", UUID.replace("-", ""), " " + UUID, "x", "a" * 200]
        self.assertEqual([biid(text.encode()) for text in texts], self.identifiers(*texts))
        self.assertNotEqual(biid(UUID.encode()), biid(UUID.upper().encode()))

    def test_bytes_beyond_ascii_count_as_well(self):
        self.assertEqual([biid(b"\x80\xff\xe4"), biid(b"\xc3\xa4")],
                         self.identifiers({"units": [0x80, 0xFF, 0xE4]}, {"units": [0xC3, 0xA4]}))

    def test_text_ends_at_its_first_zero_byte(self):
        self.assertEqual([biid(b"ab"), biid(b"")], self.identifiers({"units": [0x61, 0x62, 0, 0x63]}, {"units": [0, 0x61]}))

    def test_empty_text_is_refused_and_leaves_the_result_alone(self):
        outcome = self.play_to_end(call("GetBiid", deviceUuid="", biid="Before"))
        self.assertEqual([{"call": "GetBiid", "returns": "Before"}], outcome.host)
        self.assertEqual([trace("GetBiid", 'deviceUuid: ""'), error("GetBiid", "empty deviceUuid")], outcome.calls)

    def test_results_are_accepted_in_the_list_of_printers(self):
        device = {"dev_biid": self.identifiers(UUID)[0]}
        self.assertEqual([sent(device)], self.play_to_end(found(device)).companion)

    def test_both_roads_give_the_same(self):
        self.assertEqual(biid(UUID.encode()),
                         self.play_to_end(call("GetBiid", deviceUuid=UUID), road="basic").host[0]["returns"])


class PlainForm(SessionTestCase):
    @staticmethod
    def plain(device_uuid, **others) -> dict:
        return call("GetBiid_Internal", deviceUuid=device_uuid, **{"buffer": "before", **others})

    def answers(self, *steps) -> list[dict]:
        return [line["returns"] for line in self.play_to_end(*steps).host]

    def test_gives_the_same_identifier_and_logs_under_the_same_name(self):
        outcome = self.play_to_end(self.plain(UUID))
        self.assertEqual([{"call": "GetBiid_Internal", "returns": {"result": 0, "text": biid(UUID.encode())}}], outcome.host)
        self.assertEqual([trace("GetBiid", f'deviceUuid: "{UUID}"'),
                          trace("GetBiid", f'...returns biid: "{biid(UUID.encode())}"')], outcome.calls)

    def test_refused_text_empties_the_buffer_and_is_no_failure(self):
        outcome = self.play_to_end(self.plain(""))
        self.assertEqual([{"call": "GetBiid_Internal", "returns": {"result": 0, "text": ""}}], outcome.host)
        self.assertEqual([trace("GetBiid", 'deviceUuid: ""'), error("GetBiid", "empty deviceUuid")], outcome.calls)

    def test_needs_room_for_the_end_of_the_text(self):
        self.assertEqual([{"result": 0, "text": biid(UUID.encode())}, {"result": 34, "text": ""}, {"result": 34, "text": ""}],
                         self.answers(self.plain(UUID, size=65), self.plain(UUID, size=64), self.plain(UUID, size=1)))

    def test_without_a_buffer_there_is_the_error_alone(self):
        self.assertEqual([{"result": 22, "text": None}, {"result": 22, "text": "before"}, {"result": 22, "text": "before"}],
                         self.answers(self.plain(UUID, buffer=None), self.plain(UUID, size=0), self.plain("", size=0)))


if __name__ == "__main__":
    unittest.main()
