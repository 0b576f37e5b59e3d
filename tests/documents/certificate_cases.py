"""Certificates, lists and authorities with one fault each, and the codes that generate and verify return for them.

They share a few keys, since making RSA keys takes time.
"""

from __future__ import annotations

import os
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Dict, List, Tuple

PRODUCT = "harbortale-demo"
NOW = ("20260101000000Z", "20750101000000Z")
LATER = ("20260201000000Z", "20760101000000Z")
PAST = ("20200101000000Z", "20210101000000Z")
FUTURE = ("20700101000000Z", "20750101000000Z")
AUTHORITY = "basicConstraints = critical, CA:TRUE\nkeyUsage = critical, "
PRODUCTS = "basicConstraints = critical, CA:TRUE, pathlen:0\nkeyUsage = critical, digitalSignature, keyCertSign\n"
ROW = re.compile(r"^\| (\d+) \| (.*) \|$", re.MULTILINE)
CONFIG = """[req]
prompt = no
utf8 = yes
distinguished_name = subject
[subject]
CN = %s
[ca]
default_ca = issuer
[issuer]
database = %s/index.txt
rand_serial = yes
new_certs_dir = %s
policy = policy
unique_subject = no
preserve = yes
x509_extensions = extensions
[policy]
commonName = supplied
[extensions]
%s
"""


def codes_of(page: str) -> List[Tuple[int, str]]:
    """The rows of the last table on the page: the code, and what is wrong."""
    return [(int(code), what) for code, what in ROW.findall(page.split("\n## Codes\n")[1])]


def openssl(*arguments: object) -> None:
    """Run openssl, which must succeed."""
    run = subprocess.run(["openssl", *map(str, arguments)], capture_output=True, text=True, check=False)
    if run.returncode != 0:
        raise AssertionError(f"openssl {' '.join(map(str, arguments))}\n{run.stderr}")


@dataclass(frozen=True)
class Pair:
    """A certificate in PEM form and its key."""

    certificate: Path
    key: Path

    def der(self) -> Path:
        """The certificate in DER form, which the program takes."""
        path = self.certificate.with_suffix(".der")
        openssl("x509", "-in", self.certificate, "-outform", "DER", "-out", path)
        return path


@dataclass
class Case:
    """The trust material of a program, and the certificate given to it."""

    directory: Path
    authority: Path
    revocation_list: Path
    certificate: Path
    key: Path
    sealed: Path
    """A catalogue signed with the key."""
    product: str = PRODUCT
    """The product id of the command lines."""

    def _run(self, *arguments: object) -> int:
        environment = {**os.environ, "SEALKEEPER_TEST_TRUST_CA": str(self.authority),
                       "SEALKEEPER_TEST_TRUST_CRL": str(self.revocation_list)}
        command = [os.environ["SEALKEEPER_TRUSTING_FILES"], "-productid", self.product, *map(str, arguments)]
        return subprocess.run(command, env=environment, stdout=subprocess.DEVNULL, check=False).returncode

    def generate(self, *options: str) -> int:
        """Return the status of generate, which leaves its outputs in `sealed`."""
        return self._run("-inkey", self.key, "-incert", self.certificate, "-target_game_dir", self.sealed, *options,
                         self.directory / "game.cfg")

    def verify(self) -> int:
        """Return the status of verify for a game sealed with the key and shipped with the certificate."""
        copy = self.sealed / "Quorvane/Certificates/base.cer"
        copy.write_bytes(self.certificate.read_bytes())
        return self._run("verify", self.sealed)


class Authority:
    """An authority, its list, a product's certificate, and variants of them."""

    def __init__(self, directory: Path) -> None:
        self._directory = directory
        self._made = 0
        (directory / "game.cfg").write_text('config_info { version = 2; }\nsearch_options { include_paths = ["a"] }\n')
        self._key = self.new_key(2048)
        self._product_key = self.new_key(2048)
        self.own = self.authority()
        self.product = self.issue(self.own, PRODUCT, PRODUCTS)

    def _new_name(self) -> Path:
        self._made += 1
        return self._directory / str(self._made)

    def new_key(self, bits: int) -> Path:
        """Make an RSA key."""
        path = self._new_name().with_suffix(".key")
        openssl("genpkey", "-algorithm", "RSA", "-pkeyopt", f"rsa_keygen_bits:{bits}", "-out", path)
        return path

    def _config(self, name: str, extensions: str = "") -> Path:
        path = self._new_name().with_suffix(".cnf")
        path.write_text(CONFIG % (name, path.parent, path.parent, extensions))
        (path.parent / "index.txt").write_text("")
        return path

    def _issue(self, key: Path, config: Path, dates: Tuple[str, str], digest: str, *issuer: object) -> Pair:
        request, issued = config.with_suffix(".csr"), config.with_suffix(".pem")
        openssl("req", "-new", "-config", config, "-key", key, "-out", request)
        openssl("ca", "-batch", "-notext", "-config", config, "-startdate", dates[0], "-enddate", dates[1],
                "-md", digest, "-in", request, "-out", issued, *issuer)
        return Pair(issued, key)

    def authority(self, name: str = "authority", usage: str = "keyCertSign, cRLSign",
                  dates: Tuple[str, str] = NOW) -> Pair:
        """The authority with other details, but the same key."""
        config = self._config(name, AUTHORITY + usage)
        return self._issue(self._key, config, dates, "sha256", "-selfsign", "-keyfile", self._key)

    def issue(self, issuer: Pair, name: str, extensions: str = PRODUCTS, dates: Tuple[str, str] = NOW,
              digest: str = "sha256", key: "Path | None" = None) -> Pair:
        """A certificate for the product's key, or the one given."""
        return self._issue(key or self._product_key, self._config(name, extensions), dates, digest,
                           "-cert", issuer.certificate, "-keyfile", issuer.key)

    def revocation_list(self, issuer: Pair, *revoked: Pair, dates: Tuple[str, str] = NOW) -> Path:
        """A revocation list made by the issuer."""
        config = self._config("list")
        for pair in revoked:
            openssl("ca", "-config", config, "-md", "sha256", "-cert", issuer.certificate, "-keyfile", issuer.key,
                    "-revoke", pair.certificate)
        path = config.with_suffix(".crl")
        openssl("ca", "-gencrl", "-config", config, "-md", "sha256", "-cert", issuer.certificate,
                "-keyfile", issuer.key, "-crl_lastupdate", dates[0], "-crl_nextupdate", dates[1], "-out", path)
        openssl("crl", "-in", path, "-outform", "DER", "-out", path)
        return path

    def case(self, product: "Pair | None" = None, authority: "Pair | None" = None,
             revocation_list: "Path | None" = None) -> Case:
        """A case in which everything is good except the arguments."""
        pair = product or self.product
        game = self._new_name()
        game.mkdir()
        (game / "a").write_text("a")
        made = Case(self._directory, (authority or self.own).der(), revocation_list or self.revocation_list(self.own),
                    pair.der(), pair.key, game)
        if made.generate("-gamedev") != 0:
            raise AssertionError("cannot seal a game")
        return made

    def foreign(self) -> Pair:
        """An authority with the same name, but another key."""
        key = self.new_key(2048)
        config = self._config("authority", AUTHORITY + "keyCertSign, cRLSign")
        return self._issue(key, config, NOW, "sha256", "-selfsign", "-keyfile", key)

    def in_pem(self) -> Case:
        """The certificate in PEM form, which is refused."""
        made = self.case()
        made.certificate = self.product.certificate
        return made

    def cases_with_two_faults(self) -> List[Tuple[Tuple[int, int], Case]]:
        """Cases with the codes of both faults."""
        expired = self.issue(self.own, PRODUCT, dates=PAST)
        other = self.issue(self.own, "other")
        weak = self.issue(self.own, PRODUCT, digest="sha1")
        old_list = self.revocation_list(self.own, self.product, dates=PAST)
        foreign_list = self.revocation_list(self.foreign(), dates=PAST)
        return [
            ((30, 32), self.case(expired, revocation_list=self.revocation_list(self.own, expired))),
            ((32, 31), self.case(other, revocation_list=self.revocation_list(self.own, other))),
            ((32, 34), self.case(revocation_list=old_list)),
            ((31, 33), self.case(other, revocation_list=foreign_list)),
            ((31, 22), self.case(self.issue(self.foreign(), "other"))),
            ((33, 34), self.case(revocation_list=foreign_list)),
            ((34, 22), self.case(weak, revocation_list=old_list)),
        ]


def _mod(made: Authority) -> Pair:
    return made.issue(made.product, PRODUCT, "basicConstraints = critical, CA:FALSE", key=made.product.key)


CASES: Dict[str, Callable[[Authority], Case]] = {
    "the certificate is in PEM": Authority.in_pem,
    "the product's certificate has expired": lambda made: made.case(made.issue(made.own, PRODUCT, dates=PAST)),
    "the authority has expired": lambda made: made.case(authority=made.authority(dates=PAST)),
    "the product's certificate is revoked": lambda made: made.case(
        revocation_list=made.revocation_list(made.own, made.product)),
    "the certificate is of another product": lambda made: made.case(made.issue(made.own, "other")),
    "its alternative names are of another product": lambda made: made.case(
        made.issue(made.own, PRODUCT, PRODUCTS + "subjectAltName = email:support@harbortale.example")),
    "the list is signed by another key than the authority's": lambda made: made.case(
        revocation_list=made.revocation_list(made.foreign())),
    "the authority may not sign lists": lambda made: made.case(authority=made.authority(usage="keyCertSign")),
    "the list has expired": lambda made: made.case(revocation_list=made.revocation_list(made.own, dates=PAST)),
    "the certificate was issued by another authority": lambda made: made.case(made.issue(made.foreign(), PRODUCT)),
    "the certificate was issued by a product, as a mod's is, and bears the product's name": lambda made: made.case(
        _mod(made)),
    "the certificate is not valid yet": lambda made: made.case(made.issue(made.own, PRODUCT, dates=FUTURE)),
    "the list is not valid yet": lambda made: made.case(revocation_list=made.revocation_list(made.own, dates=FUTURE)),
    "the authority is not valid yet": lambda made: made.case(authority=made.authority(dates=FUTURE)),
    "the authority may not sign certificates": lambda made: made.case(authority=made.authority(usage="cRLSign")),
    "the key has less than 2048 bits": lambda made: made.case(made.issue(made.own, PRODUCT, key=made.new_key(1024))),
    "the certificate is signed with SHA-1": lambda made: made.case(made.issue(made.own, PRODUCT, digest="sha1")),
    "the list is of another authority, and is passed over": lambda made: made.case(
        revocation_list=made.revocation_list(made.authority(name="another authority"), made.product)),
}
