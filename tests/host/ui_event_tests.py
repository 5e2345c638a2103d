"""Screens, controls, advertisements, URLs, forms and reports, as an exported call turns into a record or a refusal."""

import unittest

from support import SessionTestCase, call, error, record

SCREEN = {"flow": "setup", "screenPath": "a/b", "screenName": "Home", "mode": "first_run"}
CONTROLS = [("ButtonClicked", "button"), ("TileClicked", "tile")]


class Labels(SessionTestCase):
    def labels(self, *steps) -> list[str]:
        return [event["app_event_object_label"] for event in self.play(*steps).records]

    def test_screen_alone_has_its_name_alone(self):
        self.assertEqual(["/Home"], self.labels(call("ScreenDisplayed", screenName="Home")))

    def test_empty_flow_and_path_add_nothing(self):
        self.assertEqual(["/Home"], self.labels(call("ScreenDisplayed", flow="", screenPath="", screenName="Home")))

    def test_all_parts_stand_in_order_and_a_path_keeps_its_slashes(self):
        self.assertEqual(["/setup.flow/a/b/Home-first_run", "/setup.flow/a/b/Home-first_run#ok"],
                         self.labels(call("ScreenDisplayed", **SCREEN), call("ButtonClicked", **SCREEN, controlName="ok")))

    def test_each_control_says_what_it_is(self):
        outcome = self.play(*(call(export, **SCREEN, controlName="ok-2") for export, _ in CONTROLS),
                            call("HyperlinkClicked", **{**SCREEN, "mode": "on"}, controlName="ok-2"))
        self.assertEqual([record("user", "clicked", object_, "/setup.flow/a/b/Home-first_run#ok-2")
                          for _, object_ in CONTROLS]
                         + [record("user", "clicked", "hyperlink", "/setup.flow/a/b/Home-on#url_ok-2")], outcome.records)

    def test_any_byte_but_zero_is_checked(self):
        steps = [call("CheckboxChanged", isChecked=value, screenName="Home", controlName="ok") for value in (1, 255, 128, 0)]
        self.assertEqual(["checked", "checked", "checked", "unchecked"],
                         [event["app_event_action"] for event in self.play(*steps).records])

    def test_letters_of_either_case_are_accepted_in_screens_and_controls(self):
        self.assertEqual(["/Flow.flow/Path_1/hOME-MODE#oK"], self.labels(
            call("ButtonClicked", flow="Flow", screenPath="Path_1", screenName="hOME", mode="MODE", controlName="oK")))


class Refusals(SessionTestCase):
    def assert_refused(self, step: dict, *errors):
        outcome = self.play(step)
        self.assertEqual([], outcome.companion)
        self.assertEqual(list(errors), outcome.error_file)

    def test_every_bad_argument_is_reported_in_the_order_of_the_checks(self):
        self.assert_refused(
            call("AdClosed", adType=1, product=" p", name="n ", variant="\u0085", flow="f l", screenPath="/",
                 screenName="-", mode="a-b", controlName="a b", globalContext={"repeat": "x", "times": 129}),
            error("AdClosed", 'invalid [REQUIRED] product arg: " p"'),
            error("AdClosed", 'invalid [REQUIRED] name arg: "n "'),
            error("AdClosed", 'invalid [REQUIRED] variant arg: "\u0085"'),
            error("AdClosed", 'invalid [optional] flow arg: "f l"'),
            error("AdClosed", 'invalid [optional] screenPath arg: "/"'),
            error("AdClosed", 'invalid [REQUIRED] screenName arg: "-"'),
            error("AdClosed", 'invalid [optional] mode arg: "a-b"'),
            error("AdClosed", 'invalid [REQUIRED] controlName arg: "a b"'),
            error("AdClosed", f'invalid [optional] globalContext arg: "{"x" * 129}"'))

    def test_empty_mode_and_global_context_fail_where_null_passes(self):
        self.assert_refused(call("ScreenDisplayed", screenName="Home", mode="", globalContext=""),
                            error("ScreenDisplayed", 'invalid [optional] mode arg: ""'),
                            error("ScreenDisplayed", 'invalid [optional] globalContext arg: ""'))

    def test_capitals_fail_in_names_of_forms_and_reports(self):
        for export, name in (("FormSubmitted", "formName"), ("ReportGenerated", "reportName")):
            with self.subTest(export):
                self.assert_refused(call(export, orgName="Org", codeName="Code", version="1.0", details={}, **{name: "Name"}),
                                    error(export, 'invalid [REQUIRED] orgName arg: "Org"'),
                                    error(export, 'invalid [REQUIRED] codeName arg: "Code"'),
                                    error(export, f'invalid [REQUIRED] {name} arg: "Name"'))

    def test_ad_of_an_undefined_type_passes_the_checks_and_ends_at_its_conversion(self):
        self.assert_refused(call("AdDisplayed", adType=5, product="", name="", variant="", screenName="Home", controlName="ok"),
                            error("AdDisplayed", "[Undefined AdType: 5]", title="Exception"))


class Urls(SessionTestCase):
    def launched(self, url) -> tuple[list[str], list]:
        outcome = self.play(call("UrlLaunchedEx", url=url))
        return [event["app_event_object_label"] for event in outcome.records], outcome.error_file

    def test_goes_out_without_its_query_and_with_the_rest(self):
        self.assertEqual((["https://ann@host:8080/a%20b/c#part"], []),
                         self.launched("https://ann@host:8080/a%20b/c#part?q=1?r=2"))
        self.assertEqual((["file://host"], []), self.launched("file://host?"))

    def test_scheme_in_capitals_passes_the_check_and_not_the_event(self):
        self.assertEqual(([], [error("UrlLaunchedEx", "objectLabel is not formatted correctly. Must be of form "
                                     "^(file|https?)://[^?]+$", title="Exception")]), self.launched("HTTPS://host"))

    def test_space_in_the_path_is_refused_although_the_query_is_cut(self):
        self.assertEqual(([], [error("UrlLaunchedEx", 'invalid [REQUIRED] urlNoPii arg: "https://host/a b"')]),
                         self.launched("https://host/a b?q"))

    def test_query_right_behind_the_scheme_leaves_nothing_to_accept(self):
        self.assertEqual(([], [error("UrlLaunchedEx", 'invalid [REQUIRED] urlNoPii arg: "https://"')]),
                         self.launched("https://?q"))


class Details(SessionTestCase):
    def test_blank_ad_texts_become_unknown(self):
        outcome = self.play(call("AdClicked", adType=0, product="", name="A", variant="", screenName="Home", controlName="ok"))
        self.assertEqual([record("user", "clicked", "ad", "/Home#ok", {
            "schema": "generic/1.0.0", "moniker": "x-dvrn_ad_basic/1.0", "campaign_type": "unknown",
            "campaign_product": "unknown", "campaign_name": "A", "campaign_variant": "unknown"})], outcome.records)

    def test_schema_and_moniker_replace_the_hosts_fields_of_that_name(self):
        outcome = self.play(call("FormSubmitted", orgName="o", codeName="c", formName="f_g", version="10.2",
                                 details={"schema": "mine", "moniker": "mine", "Schema": "kept"}))
        self.assertEqual([record("user", "submitted", "form", "form_generic", {
            "schema": "app_event_form_generic/1.0.0", "moniker": "x-o_c_form_f_g/10.2", "Schema": "kept"})], outcome.records)

    def test_empty_local_context_is_a_dictionary_and_null_is_null(self):
        outcome = self.play(call("ScreenDisplayed", screenName="Home", localContext={}),
                            call("ScreenDisplayed", screenName="Home", localContext=None))
        self.assertEqual([{}, None], [event["app_event_context"]["context_local"] for event in outcome.records])

    def test_model_name_in_the_local_context_stays_there(self):
        outcome = self.play(call("ScreenDisplayed", screenName="Home", localContext={"_dev_modelname": "mine"}))
        self.assertEqual([record("app", "displayed", "screen", "/Home", local={"_dev_modelname": "mine"})], outcome.records)


class LongTexts(SessionTestCase):
    def test_long_texts_neither_crash_nor_stall_the_host(self):
        million = 1_000_000
        outcome = self.play(
            call("ButtonClicked", flow={"repeat": "a", "times": million}, screenPath={"repeat": "a/", "times": million},
                 screenName={"repeat": "a_", "times": million}, mode={"repeat": "a_", "times": million},
                 controlName={"repeat": "a-", "times": million}),
            call("AdClicked", adType=1, product=[{"repeat": "a", "times": million}, "\n"],
                 name={"repeat": "a ", "times": million}, variant={"repeat": " ", "times": million},
                 screenName="Home", controlName="ok"),
            call("UrlLaunchedEx", url=["https://h/", {"repeat": "a", "times": million}]), log="off")
        self.assertEqual((0, ""), (outcome.status, outcome.errors))
        self.assertEqual(["https://h/" + "a" * million], [event["app_event_object_label"] for event in outcome.records])


if __name__ == "__main__":
    unittest.main()
