"""A queue service that sends the library elsewhere: what goes there. WinInet follows a redirect by itself, and the
request's flags let it leave TLS as well, so that the token can go in the clear where the service says so."""

import unittest

from support.posting import SENT, PostingTestCase, answer, failed_send, headers, line, response

HERE = "127.0.0.36"
ELSEWHERE = "127.0.0.37"
ARRIVED = b"HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: 4\r\nConnection: close\r\n\r\nhere"


def redirect(status: int, target: str) -> bytes:
    return (f"HTTP/1.1 {status} Elsewhere\r\nLocation: {target}\r\nContent-Length: 0\r\n"
            "Connection: close\r\n\r\n").encode()


def follower(method: str, path: str, host: str) -> bytes:
    """All bytes of the request that follows a redirect."""
    return (f"{method} {path} HTTP/1.1\r\n"
            "Pragma: no-cache\r\n"
            "Cache-Control: no-cache\r\n"
            "Accept: application/json\r\n"
            "Authorization: Bearer token9\r\n"
            "User-Agent: Scan Studio/0.0.0.0\r\n"
            f"Host: {host}\r\n\r\n").encode()


class Redirect(PostingTestCase):
    ADDRESS = HERE

    def check_followed(self, status: int, target: str, expected: bytes, **target_service) -> None:
        """The token and no message go to the target, whose answer is logged as if it were the service's."""
        with self.serve(answers=(redirect(status, target),)) as first, \
                self.serve(address=ELSEWHERE, answers=(ARRIVED,), **target_service) as second:
            outcome = self.post()
        self.assertEqual([self.expected_request(message) for message in self.logged_messages(outcome)],
                         [message.raw for message in first.seen.messages])
        self.assertEqual([expected], [message.raw for message in second.seen.messages])
        self.check_lines(outcome, SENT, *response(200, "OK", 4), *answer("here"))

    def test_to_another_server_takes_the_token_along_and_not_the_message(self):
        self.check_followed(302, f"https://{ELSEWHERE}/there", follower("GET", "/there", ELSEWHERE))

    def test_to_plain_http_takes_the_token_along_in_the_clear(self):
        self.check_followed(302, f"http://{ELSEWHERE}/there", follower("GET", "/there", ELSEWHERE), port=80, plain=True)

    def test_to_another_port_is_followed_although_the_library_goes_to_443_only(self):
        self.check_followed(302, f"https://{ELSEWHERE}:8443/there", follower("GET", "/there", f"{ELSEWHERE}:8443"),
                            port=8443)

    def test_that_keeps_the_method_posts_nothing(self):
        self.check_followed(307, f"http://{ELSEWHERE}/there", follower("POST", "/there", ELSEWHERE), port=80,
                            plain=True)

    def test_to_itself_is_followed_as_often_as_the_service_says(self):
        times = 12
        with self.serve(answers=(redirect(302, f"https://{HERE}/again"),) * times + (ARRIVED,)) as service:
            outcome = self.post()
        self.assertEqual([follower("GET", "/again", HERE)] * times,
                         [message.raw for message in service.seen.messages[1:]])
        self.check_lines(outcome, SENT, *response(200, "OK", 4), *answer("here"))

    def test_to_a_server_that_is_not_trusted_is_refused(self):
        first_answer = redirect(302, f"https://{ELSEWHERE}/there")
        with self.serve(answers=(first_answer,)), \
                self.serve(address=ELSEWHERE, certificate="untrusted-root") as second:
            outcome = self.post()
        self.assertEqual([], second.seen.messages)
        self.check_lines(outcome, *failed_send("0x00002f19"), line("DATA", " <-HTTP RESULT=Elsewhere (302)"),
                         headers(first_answer.decode()), *answer(""))


if __name__ == "__main__":
    unittest.main()
