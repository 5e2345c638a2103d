"""Posting to a queue service that fails or misbehaves: the exact lines."""

import unittest

from support.basic_road_case import START
from support.posting import (NO_RESPONSE, SENT, PostingTestCase, answer, failed_send, headers, line, posting, response)


class FailingService(PostingTestCase):
    ADDRESS = "127.0.0.31"

    def test_refused_connection(self):
        self.check_lines(self.post(), *failed_send("0x00002efd"), *NO_RESPONSE, *answer(""))

    def test_unknown_server(self):
        # No label is so long: nobody on the network is asked for it, nor is one waited for.
        name = "q" * 64
        self.check_lines(self.post(LUMServerUri=f"https://{name}"), *failed_send("0x00002ee7"), *NO_RESPONSE,
                         *answer(""), host=name)

    def test_url_with_a_slash_at_its_end_and_none_fail_at_the_connection(self):
        for url in (f"https://{self.ADDRESS}/", None):
            with self.subTest(url):
                outcome = self.post(LUMServerUri=url)
                self.assertEqual([*self.before_sending(outcome, ""),
                                  line("WARNING", "InternetConnectW failed 0x00000000"),
                                  *answer("Worker thread failed!")], posting(outcome))

    def test_untrusted_root_is_refused(self):
        with self.serve(certificate="untrusted-root") as service:
            outcome = self.post()
        self.check_lines(outcome, *failed_send("0x00002f19"), *NO_RESPONSE, *answer(""))
        self.assertEqual([], service.seen.messages)

    def test_expired_certificate_and_wrong_name_are_accepted(self):
        for certificate in ("expired", "wrong-name"):
            with self.subTest(certificate), self.serve(certificate=certificate) as service:
                outcome = self.post()
                self.assertEqual([[]], [message.wrong for message in service.seen.messages])
                self.check_lines(outcome, SENT, *response(200, "OK", 47),
                                 *answer('{"ids": ["1"], "msg": "Messages put on queue."}'))

    def test_error_status_is_logged_as_data_and_not_retried(self):
        for status, text in ((401, "Unauthorized"), (500, "Internal Server Error")):
            with self.subTest(status), self.serve(f"status-{status}") as service:
                outcome = self.post(START)
                self.check_lines(outcome, SENT, *response(status, text, len(text) + 11),
                                 *answer(f'{{"msg": "{text}"}}'))
                self.assertEqual([], [line for line in outcome.log if line.severity in ("WARNING", "ERROR")])
                self.assertEqual(1, len(service.seen.messages))

    def test_connection_that_is_reset(self):
        with self.serve("reset") as service:
            outcome = self.post()
        self.check_lines(outcome, *failed_send("0x00002f7d"), *NO_RESPONSE, *answer(""))
        self.assertEqual([], service.seen.messages)

    def test_answer_that_is_no_http(self):
        with self.serve("garbage") as service:
            outcome = self.post()
        self.check_lines(outcome, SENT, *NO_RESPONSE, *answer(""))
        self.assertEqual([[]], [message.wrong for message in service.seen.messages])

    def test_headers_without_an_end_hold_the_caller_no_longer_than_its_wait(self):
        with self.serve("endless-headers") as service:
            outcome = self.post(waits=False)
            self.assertTrue(service.wait_for(lambda seen: seen.failures), "the client left with its process")
        self.check_held(outcome)
        self.check_lines(outcome)

    def test_headers_that_break_off(self):
        with self.serve(answers=(b"HTTP/1.1 200 OK\r\nX-First: 1\r\nX-Sec",)):
            outcome = self.post()
        self.check_lines(outcome, SENT, line("DATA", " <-HTTP RESULT=OK (200)"),
                         headers("HTTP/1.1 200 OK\r\nX-First: 1\r\n\r\n"), *answer(""))

    def test_body_shorter_than_its_content_length(self):
        with self.serve("cut-answer"):
            outcome = self.post()
        self.check_lines(outcome, SENT, *response(200, "OK", 47), *answer('{"ids": ["1"], "msg": "Messages put o'))

    def test_length_of_a_body_that_never_comes(self):
        with self.serve(answers=(b"HTTP/1.1 200 OK\r\nContent-Length: 4294967295\r\n\r\n",)):
            outcome = self.post()
        self.check_lines(outcome, SENT, line("DATA", " <-HTTP RESULT=OK (200)"),
                         headers("HTTP/1.1 200 OK\r\nContent-Length: 4294967295\r\n\r\n"), *answer(""))


if __name__ == "__main__":
    unittest.main()
