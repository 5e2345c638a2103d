"""How much of an answer is read and logged: the status text, the headers and the body at their limits."""

import shutil
import tempfile
import unittest
from pathlib import Path

from support.posting import SENT, PostingTestCase, answer, headers, line
from support import BUILD, LogLine
import session_player


def raw_answer(text: str = "OK", header: str = "", body: bytes = b"") -> bytes:
    return (f"HTTP/1.1 200 {text}\r\n{header}Content-Length: {len(body)}\r\nConnection: close\r\n\r\n").encode() + body


def cut(text: str) -> str:
    """As the log cuts what is too long for one line."""
    return text[:4084] + "<TRUNCATED>"


class AnswerLimit(PostingTestCase):
    ADDRESS = "127.0.0.38"

    def post_answered(self, raw: bytes):
        with self.serve(answers=(raw,)) as service:
            outcome = self.post()
        self.assertEqual(1, len(service.seen.messages))
        return outcome

    def check_status_text(self, text: str, logged: str):
        raw = raw_answer(text)
        self.check_lines(self.post_answered(raw), SENT, line("DATA", f" <-HTTP RESULT={logged} (200)"),
                         headers(raw.decode()), *answer(""))

    def test_status_text_of_258_characters_fits_in_519_bytes(self):
        self.check_status_text("T" * 257 + "!", "T" * 257 + "!")

    def test_status_text_of_259_characters_is_lost(self):
        self.check_status_text("T" * 259, "")

    def check_headers(self, length: int, logged: LogLine):
        short = len(raw_answer(header="X: \r\n"))
        raw = raw_answer(header=f"X: {'h' * (length - short)}\r\n")
        self.assertEqual(length, len(raw))
        self.check_lines(self.post_answered(raw), SENT, line("DATA", " <-HTTP RESULT=OK (200)"), logged, *answer(""))

    def test_headers_of_4094_characters_fit_in_8191_bytes(self):
        # The log's own limit is nearly the same.
        self.check_headers(4094, line("DEBUG", "Headers=HTTP/1.1 200 OK\\r\\nX: " + "h" * (4094 - 62)
                                      + "\\r\\nContent-Length: 0\\r\\nCon<TRUNCATED>"))

    def test_headers_of_4095_characters_are_lost(self):
        self.check_headers(4095, line("DEBUG", "Headers="))

    def check_body(self, body: bytes, logged: str):
        raw = raw_answer(body=body)
        self.check_lines(self.post_answered(raw), SENT, line("DATA", " <-HTTP RESULT=OK (200)"),
                         headers(raw[:-len(body)].decode()), *answer("")[:1], line("DATA", logged))

    def test_answer_of_4092_bytes_fits_in_the_log(self):
        self.check_body(b"a" * 4091 + b"b", "<- " + "a" * 4091 + "b")

    def test_longer_answer_is_cut_by_the_log(self):
        self.check_body(b"a" * 4093, cut("<- " + "a" * 4093))

    def read(self, body: bytes) -> bytes:
        """What one post takes for the answer, byte by byte; the log could not show it."""
        program = "lumeq_posting_program.exe"
        shutil.copy(BUILD / "tests" / program, self.machine.host_folder)
        with self.serve(answers=(raw_answer(body=body),)), tempfile.TemporaryDirectory(dir=BUILD / "play") as folder:
            output = Path(folder) / "output"
            status = self.machine.run(program, [self.ADDRESS], session_player.Conditions(road="basic"), output, 100)
            self.assertEqual(0, status)
            return output.read_bytes()

    def test_answer_is_read_up_to_4095_bytes(self):
        for length in (4094, 4095, 4096, 9000):
            with self.subTest(length):
                body = bytes(ord("a") + at % 26 for at in range(length))
                self.assertEqual(body[:4095], self.read(body))

    def test_answer_ends_at_its_first_zero_byte(self):
        self.assertEqual(b"gr\xc3\xbc\xff", self.read(b"gr\xc3\xbc\xff\0rest"))


if __name__ == "__main__":
    unittest.main()
