"""A certificate authority of the queue service's own, made with the openssl command.

The chain is root, issuer, server. Whoever is to trust the service trusts root.der of its folder.
"""

import subprocess
from datetime import datetime, timedelta, timezone
from pathlib import Path
from typing import NamedTuple, Optional

KINDS = ("valid", "expired", "wrong-name", "untrusted-root")
WRONG_NAME = "not.this.server.example"

CONFIGURATION = """\
[req]
distinguished_name = name
[name]
[ca]
default_ca = authority
[authority]
new_certs_dir = .
database = index.txt
rand_serial = yes
default_md = sha256
unique_subject = no
policy = policy
[policy]
commonName = supplied
[extensions]
"""
AUTHORITY_EXTENSIONS = """\
basicConstraints = critical, CA:TRUE
keyUsage = critical, keyCertSign, cRLSign
"""
SERVER_EXTENSIONS = """\
basicConstraints = critical, CA:FALSE
keyUsage = critical, digitalSignature, keyEncipherment
extendedKeyUsage = serverAuth
"""


class ServerCertificate(NamedTuple):
    chain: Path
    """The server's own, followed by its issuer's."""
    key: Path


class Validity(NamedTuple):
    start: datetime
    end: datetime


def make_server_certificate(folder: Path, kind: str, address: str) -> ServerCertificate:
    """One of KINDS, for this IP address or name. What the folder holds is used again."""
    authority = _authority(folder / "untrusted" if kind == "untrusted-root" else folder)
    stem = f"{kind}-{address}"
    made = ServerCertificate(authority / f"{stem}.chain.pem", authority / f"{stem}.key")
    if not made.chain.exists():
        name = f"DNS:{WRONG_NAME}" if kind == "wrong-name" else _alternative_name(address)
        _issue(authority, stem, address, f"{SERVER_EXTENSIONS}subjectAltName = {name}\n",
               _validity(ended=kind == "expired"), "issuer")
        made.chain.write_text("".join((authority / f"{part}.pem").read_text() for part in (stem, "issuer")))
    return made


def _alternative_name(address: str) -> str:
    return f"IP:{address}" if address[0].isdigit() else f"DNS:{address}"


def make_root(folder: Path) -> Path:
    """The file with the certificate that is to be trusted."""
    return _authority(folder) / "root.der"


def _authority(folder: Path) -> Path:
    if not (folder / "issuer.pem").exists():
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "index.txt").touch()
        _issue(folder, "root", f"Lumeq development root ({folder.name})", AUTHORITY_EXTENSIONS, _validity())
        _issue(folder, "issuer", "Lumeq development issuer", AUTHORITY_EXTENSIONS, _validity(), "root")
        _openssl(folder, "x509", "-in", "root.pem", "-outform", "DER", "-out", "root.der")
    return folder


def _validity(ended: bool = False) -> Validity:
    now = datetime.now(timezone.utc)
    return Validity(now - timedelta(days=60), now + timedelta(days=-30 if ended else 3650))


def _issue(folder: Path, stem: str, name: str, extensions: str, validity: Validity,
           issuer: Optional[str] = None) -> None:
    """Without an issuer the certificate signs itself. Not with a key on a curve, which is sooner made: of such
    signatures Wine refuses those whose one number takes a byte less than the other, one in a hundred."""
    (folder / "openssl.cnf").write_text(CONFIGURATION + extensions)
    _openssl(folder, "req", "-new", "-batch", "-config", "openssl.cnf", "-subj", f"/CN={name}",
             "-newkey", "rsa:2048", "-nodes", "-keyout", f"{stem}.key", "-out", f"{stem}.csr")
    signer = ["-cert", f"{issuer}.pem"] if issuer else ["-selfsign"]
    _openssl(folder, "ca", "-batch", "-notext", "-config", "openssl.cnf", "-extensions", "extensions", *signer,
             "-keyfile", f"{issuer or stem}.key", "-startdate", f"{validity.start:%Y%m%d%H%M%SZ}",
             "-enddate", f"{validity.end:%Y%m%d%H%M%SZ}", "-in", f"{stem}.csr", "-out", f"{stem}.pem")


def _openssl(folder: Path, *arguments: str) -> None:
    done = subprocess.run(["openssl", *arguments], cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        raise RuntimeError(f"openssl {arguments[0]}: {done.stdout}")
