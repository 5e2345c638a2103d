"""A queue service on this machine, to see what an application sends.

It takes the message about the machine over HTTPS and judges it. https://localhost/ shows what has come, /good and /bad
return it as JSON, and /reset forgets it. It needs Python 3.9 and, once, the openssl command. Nothing leaves this machine.
"""

import argparse
import os
import sys
import threading
from pathlib import Path

import certificates
from local_service import NAME, LocalService, Taken
from page import find_lumeq, page_maker

PROGRAM = Path(sys.argv[0]).resolve()
GIT_FOR_WINDOWS = r"C:\Program Files\Git\usr\bin"
"""Has openssl, and is usually not on the path."""
AUTHORITY = "lumeq-serve"


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="lumeq-serve", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--port", type=int, default=443, help="Lumeq always goes to 443 (default: 443)")
    parser.add_argument("--folder", metavar="DIR", type=Path, default=Path.home() / f".{AUTHORITY}" / AUTHORITY,
                        help="where the certificates are kept (default: %(default)s)")
    parser.add_argument("--lumeq", metavar="FILE", type=Path, help="lumeq.exe, which makes the page")
    return parser.parse_args()


def make_certificates(folder: Path) -> Path:
    """Returns the file that the machine has to trust. Nobody can issue another certificate in its name, because the
    keys of the authorities are deleted as soon as the server's certificate is made."""
    if os.name == "nt":
        os.environ["PATH"] += os.pathsep + GIT_FOR_WINDOWS
    root = certificates.make_root(folder)
    certificates.make_server_certificate(folder, "valid", NAME)
    for authority in ("root", "issuer"):
        (folder / f"{authority}.key").unlink(missing_ok=True)
    return root


def instructions(root: Path, port: int) -> str:
    place = NAME if port == 443 else f"{NAME}:{port}"
    return f"""\
Listening on https://{place}. What has come: https://{place}/, /good, /bad; to forget it: /reset

1. Let Windows trust the service's certificate, once:
     certutil -user -addstore Root "{root}"
   and when you no longer need it:
     certutil -user -delstore Root "Lumeq development root ({root.parent.name})"
2. Put this into the factory settings file beside the application:
     <ProjectId>local</ProjectId>
     <LUMServerUri>https://{NAME}</LUMServerUri>
     <AuthenticationToken>ybpny-gbxra</AuthenticationToken>
3. Opt in, and start the application on a machine without the .NET Framework 4 runtime. With the runtime, the companion
   library delivers, by a way of its own.
   `lumeq doctor` says what is in the way.
"""


def report(taken: Taken) -> None:
    message = taken.message
    verdict = "bad " if message.wrong else "good"
    print(f"{taken.time:%H:%M:%S} {verdict} {message.agent or 'a request'} to {message.queue or 'no queue'}", flush=True)
    for wrong in message.wrong:
        print(f"              {wrong}", flush=True)


def main() -> int:
    arguments = parse_arguments()
    try:
        root = make_certificates(arguments.folder)
    except (OSError, RuntimeError) as error:
        print(f"lumeq-serve: cannot make certificates with openssl: {error}", file=sys.stderr)
        return 2
    page = page_maker(find_lumeq(arguments.lumeq, PROGRAM.parent))
    try:
        service = LocalService(arguments.folder, arguments.port, page, report)
    except OSError as error:
        print(f"lumeq-serve: cannot listen on port {arguments.port}: {error}", file=sys.stderr)
        return 2
    with service:
        print(instructions(root, service.port), flush=True)
        try:
            threading.Event().wait()
        except KeyboardInterrupt:
            pass
    return 0


if __name__ == "__main__":
    sys.exit(main())
