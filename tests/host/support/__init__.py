"""What the black-box tests share. They play sessions against the built DLL and read what each one left."""

from .paths import BUILD, OBJDUMP, ROOT
from .log_lines import API, LogLine, error, lines_of, parse_log, trace
from .outcome import Outcome, record
from .host_process import HOST_SECONDS
from .session_case import SessionTestCase, call

__all__ = ["API", "BUILD", "HOST_SECONDS", "LogLine", "OBJDUMP", "Outcome", "ROOT", "SessionTestCase", "call", "error",
           "lines_of", "parse_log", "record", "trace"]
