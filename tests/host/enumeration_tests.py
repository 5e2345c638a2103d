"""The numbers that a host passes for enumerated values, their texts in the log, and what is sent for them."""

import unittest

from support import SessionTestCase, call, error, record, trace
from support.tasks import (PAIRS, Pair, completed, completed_line, completed_record, initiated, initiated_record, masked,
                           refusal, task_records)
from schema import AD, EXPORTS, HOW, METHOD, WHY, Enumeration


def undefined(enumeration: Enumeration) -> list[tuple[int, str, str]]:
    """The numbers next to the defined ones, with what the log's line and the report show for them."""
    return [(number, enumeration.text(number), enumeration.thrown(number)) for number in (-1, len(enumeration.texts))]


class Tasks(SessionTestCase):
    def test_all_values_of_all_arguments(self):
        for pair in PAIRS:
            with self.subTest(pair.name):
                self.check(pair)

    def check(self, pair: Pair):
        """First all arguments go through their defined values side by side, then each one passes its ends."""
        export = EXPORTS[pair.name + "Completed"]
        arguments = {argument.name: argument.enumeration for argument in export.arguments if argument.enumeration}
        keys = {name: key for key, name in export.facts["fields"]}
        steps, records, lines = [], [], []
        for turn in range(max(len(enumeration.texts) for enumeration in arguments.values())):
            numbers = {name: turn % len(enumeration.texts) for name, enumeration in arguments.items()}
            texts = {name: enumeration.texts[numbers[name]] for name, enumeration in arguments.items()}
            steps += [initiated(pair), completed(pair, **numbers)]
            records += [initiated_record(pair),
                        completed_record(pair, details={keys[name]: text for name, text in texts.items()})]
            lines.append(completed_line(pair, **texts))
        steps.append(initiated(pair))
        records.append(initiated_record(pair))
        for name, enumeration in arguments.items():
            for number, text, thrown in undefined(enumeration):
                steps.append(completed(pair, **{name: number}))
                lines += [completed_line(pair, **{name: text}), refusal(pair, thrown, title="Exception")]
        outcome = self.play_to_end(*steps)
        self.assertEqual(records, task_records(outcome))
        self.assertEqual(lines, [line for line in masked(outcome.calls) if not line.function.endswith("Initiated")])


class Ads(SessionTestCase):
    ACTIONS = (("AdDisplayed", "app", "displayed"), ("AdClicked", "user", "clicked"), ("AdClosed", "user", "closed"))

    def test_every_type_of_every_ad_export(self):
        def ad(export: str, number: int) -> dict:
            return call(export, adType=number, product="P", name="N", variant="V", screenName="Home", controlName="ok")

        def line(export: str, text: str):
            return trace(export, f'adType: {text}, product: "P", name: "N", variant: "V", flow: (null), screenPath: (null), '
                         'screenName: "Home", mode: (null), controlName: "ok", localContext: (null), globalContext: (null)')

        steps, records, lines = [], [], []
        for export, actor, action in self.ACTIONS:
            for number, text in enumerate(AD.texts):
                steps.append(ad(export, number))
                records.append(record(actor, action, "ad", "/Home#ok", {
                    "schema": "generic/1.0.0", "moniker": "x-dvrn_ad_basic/1.0", "campaign_type": text,
                    "campaign_product": "P", "campaign_name": "N", "campaign_variant": "V"}))
                lines.append(line(export, text))
            for number, text, thrown in undefined(AD):
                steps.append(ad(export, number))
                lines += [line(export, text), error(export, thrown, title="Exception")]
        outcome = self.play_to_end(*steps)
        self.assertEqual(records, outcome.records)
        self.assertEqual(lines, outcome.calls)


class Starts(SessionTestCase):
    @staticmethod
    def start(why: int, how: int) -> dict:
        return call("StartupEx", appName="App", whyType=why, howType=how, trackSystemInfo=False, trackPrintQueueInfo=True)

    @staticmethod
    def line(why: str, how: str):
        return trace("StartupEx", f'appName: "App", whyType: {why}, howType: {how}, trackSystemInfo: 0, trackPrintQueueInfo: 1')

    def test_other_numbers_go_out_than_the_host_passed(self):
        turns = [(number % len(WHY.texts), number) for number in range(len(HOW.texts))]
        outcome = self.play_to_end(*(self.start(*turn) for turn in turns))
        self.assertEqual([{"operation": "StartupInternal", "appName": "App", "howType": HOW.records[how],
                           "whyType": WHY.records[why], "trackSystemInfo": False, "trackPrintQueueInfo": True}
                          for why, how in turns], outcome.companion)
        self.assertEqual([self.line(WHY.texts[why], HOW.texts[how]) for why, how in turns], outcome.calls)

    def test_undefined_ones_start_nothing_and_the_reason_is_reported_before_the_way(self):
        outcome = self.play_to_end(self.start(-1, 0), self.start(8, 0), self.start(0, -1), self.start(0, 10), self.start(8, 10))

        def reported(thrown: str):
            return error("StartupEx", thrown, title="Exception")

        self.assertEqual([
            self.line("[Undefined WhyType value: -1]", "unknown"), reported("[Undefined WhyType: -1]"),
            self.line("[Undefined WhyType value: 8]", "unknown"), reported("[Undefined WhyType: 8]"),
            self.line("unknown", "[Undefined HowType value: -1]"), reported("[Undefined HowType: -1]"),
            self.line("unknown", "[Undefined HowType value: 10]"), reported("[Undefined HowType: 10]"),
            self.line("[Undefined WhyType value: 8]", "[Undefined HowType value: 10]"), reported("[Undefined WhyType: 8]"),
        ], outcome.calls)
        self.assertEqual([], outcome.companion)


class Texts(SessionTestCase):
    def test_texts_by_number_and_an_undefined_number_is_no_error(self):
        texts = [*enumerate(METHOD.texts), (-1, "[Undefined ConnectionMethodType value: -1]"),
                 (12, "[Undefined ConnectionMethodType value: 12]"),
                 (-2147483648, "[Undefined ConnectionMethodType value: -2147483648]")]
        outcome = self.play_to_end(*(step for number, _ in texts for step in (
            call("ToString", enumValue=number, textValue="before"), call("ToString_Internal", enumValue=number, buffer="before"))))
        self.assertEqual([line for _, text in texts for line in (
            {"call": "ToString", "returns": text},
            {"call": "ToString_Internal", "returns": {"result": 0, "text": text}})], outcome.host)
        # Both log under the one name.
        self.assertEqual([line for number, text in texts for line in (
            trace("ToString", f"enumValue: {text} ({number})"), trace("ToString", f'...returns textValue: "{text}"')) * 2],
            outcome.calls)


if __name__ == "__main__":
    unittest.main()
