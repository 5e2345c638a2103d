"""What random sessions are made of: texts that a rule takes, texts right beside it, and odd characters."""

# Letters, spaces and others that every rule about letters, digits and spaces takes for the same as the platform does.
ODD = [
    *"aZ09_-/.\\?#:%{}\"'<>|*&;=+@ ~", "\0", "\x01", "\x07", "\b", "\t", "\n", "\v", "\f", "\r", "\r\n", "\x1a",
    "\x1b", "\x1f", "\x7f", "\x80", "\x9b", "\x9f", "\u00a0", "\u2003", "\u2028", "\u2029", "\u3000", "\u00e9",
    "\u00df", "\u0436", "\u6f22", "\ud55c", "\u20ac", "\u2013", "\ufffd", "\uff21",
    # Letters whose other case is an ASCII letter.
    "\u0130", "\u0131", "\u017f", "\u212a",
    "\ud800", "\udbff", "\udc00", "\udfff", "\udc00\ud800", "\ud83d\ude00", "\udbff\udfff"]
# For rules that ask for neither.
STRANGE = [*ODD, "\x85", "\u00ad", "\u200b", "\u200e", "\ufeff", "\ufffe", "\uffff", "\ufdd0", "\u0301", "\u0660",
           "\u00b2"]
# A path may hold none of these, so that no session makes a folder whose name the platform changes.
FORBIDDEN = [*'"*/:<>?|', "\0", "\x01", "\t", "\n", "\x1f", "\x7f", "\x80", "\x9f", "\\\\\\"]

WORDS = ["a", "Z", "7", "setup", "Scan", "main_menu", "Home2", "x_y_z", "A_", "ok-button", "S__1", "caf\u00e9s"]
NAMES = ["App", "Scan Station 2", "a", "!", "a  b", "100%", "%s%n%d", 'the "best"', "C:\\x", "\u00e9t\u00e9",
         "\u6f22\u5b57", "\ud83d\ude00", "\u00a0", "\u2003\u3000", "a\x7fb", "\ud800", "<TRUNCATED>", "LumeqApi", "\\n",
         "{flow}"]
_VERSIONS = ["1.0", "1.2.3", "1.2.3.4", "10.20", "0.0", "1", "1.", "1.2.3.4.5", "00.000.0"]

# Texts that a rule takes, or nearly.
SEEDS = {
    "appName": NAMES,
    "adName": [*NAMES, ""],
    "adProduct": [*NAMES, ""],
    "adVariant": [*NAMES, ""],
    "codeName": ["tarvik", "a", "abc"],
    "orgName": ["dvrn", "z"],
    "formName": ["printer", "a_b"],
    "reportName": ["setup", "x_y"],
    "controlName": WORDS,
    "context": ["Tarvik 3000", *NAMES],
    "flow": [*WORDS, ""],
    "installName": ["Setup 1.2.exe", *NAMES],
    "installVersion": _VERSIONS,
    "mode": WORDS,
    "paperSize": ["A4 plain", *NAMES],
    "screenName": WORDS,
    "screenPath": [*WORDS, "", "a/b", "A_/b_1/c", "x_1/y_2"],
    "taskResult": ["success", "unknown", "error", "error_1", "error_ab", "error_a", "error_123456", "error_A1",
                   "SUCCESS"],
    "url": ["http://a", "https://host/a/b", "file://server/x y", "http://h/p?q=1", "https://u:p@h:8/#f?x?y",
            "HTTP://A/b", "http://?", "file://\u00e9/\u6f22", "http://a\u00a0b/c", "https://\ud800"],
    "schemaVersion": ["1.0", "10.20", *_VERSIONS],
}
# Texts right beside a rule.
BESIDE = {
    "appName": ["", " ", " a", "a ", "a\n", "\ta", "a\x80b", "\x9f"],
    "adName": [" ", " a", "a ", "a\x80b"],
    "adProduct": [" ", " a", "a ", "a\x9fb"],
    "adVariant": [" ", " a", "a ", "a\x80b"],
    "codeName": ["", "A", "aB", "a1", "a_b", "a b", "a\n"],
    "orgName": ["", "A", "aB", "a1", "a-b", " a"],
    "formName": ["", "a_b_c", "a_b_c_d", "_a", "a_", "a__b", "A_b"],
    "reportName": ["", "a_b_c", "_a", "a_", "a1", "A"],
    "controlName": ["", "-a", "a-", "a_", "_a", "a b", "a#b", "\u00e9"],
    "context": ["", "x" * 129, "a\nb", "a\x80", "\x1f"],
    "flow": ["_a", "a_", "a-b", "a b", "\u00e9a", "a\u00e9"],
    "installName": ["", "a?b", "a:b", "a\\b", "a\x7f", "\x9f", "*"],
    "installVersion": ["", "1.2", "1.2.3.4.5", "1.2.3.", ".1.2.3", "1..2.3", "v1.2.3"],
    "mode": ["", "_a", "a_", "a__b", "a-b", "\u00e9"],
    "paperSize": ["", " ", " a", "a ", "a\tb"],
    "screenName": ["", "_a", "a_", "a-b", "\u00e9cran", "caf\u00e9", "a/b"],
    "screenPath": ["/", "/a", "a/", "a//b", "a/_b"],
    "taskResult": ["", "Success", "error_", "error_1a", "error_a_b", "errors", "success\n"],
    "url": ["", "http://", "http:/a", "http:///a", "ftp://a", "http://a/b c", "http://a/b\tc", "http://a/b\u00a0c",
            " http://a"],
    "schemaVersion": ["", "1", "1.", ".1", "1.0.0", "1x0", "1.0 "],
}
# What a text of any length is made of, besides words.
UNITS = {
    "codeName": ["a"],
    "orgName": ["b"],
    "formName": ["a", "a_"],
    "reportName": ["a", "_a"],
    "schemaVersion": ["1", "1."],
    "installVersion": ["1", "1."],
    "taskResult": ["error_", "a"],
    "screenPath": ["a/", "a_", "b"],
    "mode": ["a_", "a"],
}
ASKS_FOR_LETTERS = {
    "controlName", "flow", "screenName", "screenPath", "url", "mode", "taskResult", "schemaVersion",
    # A name of spaces alone is no name.
    "adName", "adProduct", "adVariant"}

OUTSIDE = "Soak"
"""The folder of the drive that sessions with a subfolder from the drive's root choose."""
SUBFOLDERS = ["Sub", "Brand\\Line", "a b\\c", "sub\\", "Zuvan.1\\2", f"\\{OUTSIDE}\\In", f"\\{OUTSIDE}"]
# The companion has its own way with these.
BASIC_SUBFOLDERS = [" ", "x" * 300, "y\\" * 150 + "y", "z" * 100000]
BAD_SUBFOLDERS = ["", "\\", "\\\\", "a\\\\b", "a\\\\", "\\\\a"]

TAKE_ANY_BLOCK = {"appName", "adName", "adProduct", "adVariant", "context", "installName", "paperSize"}
"""Rules that ask neither for letters nor for digits."""

FLAGS = ["True", "False", "TRUE", "fALSE", "true", "maybe", "", "  ", "1", "Truee", "\u00a0", "\u3000",
         "\uff34\uff32\uff35\uff25"]
NO_PROJECTS = ["", "   ", "\t", "\u00a0", "\u2003", "\u3000"]

BIID = "0123456789abcdef" * 4
BAD_BIIDS = ["", "Unknown", BIID[:63], BIID + "0", BIID.replace("a", "A", 1), "g" * 64, "unknown\n", "unknown\0"]
