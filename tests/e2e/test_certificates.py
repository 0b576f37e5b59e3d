"""Which keys, certificates and revocation lists are accepted or refused, and with which messages."""

import os
import subprocess
import unittest
from pathlib import Path

import e2e_console as console
from e2e_support import CREDENTIALS, GOOD, INCLUDE_BIN, PRODUCT, Credentials, EndToEndTest

CRL_MISSING = "Could not locate the CRL file '%s'\n"
CERTIFICATE_UNREAD = "Failed to read certificate file %s\n"
KEY_MISSING = "Could not locate the private key file '%s'\n"
KEY_UNREAD = "Error reading RSA private key file '%s' (%i).\n"
NOT_PARSED = "Error parsing certificate file '%s'.\n"
NOT_TRUSTED = "Error verifying certificate file '%s' (%i).\n"
CHECK_PRODUCT = "Make sure this certificate matches the product ID specified as an argument.\n"
CHECK_CHAIN = (
    "    The chain from this certificate to the game's trusted certificate authority is not valid.\n"
    "    Check that %s is a certificate issued from your game's hash catalogue CA.\n"
)
NO_PAIR = "Public key in certificate file %s does not match private key file '%s'.\n"
DAMAGED = CREDENTIALS / "damaged"
TRUST = Path(__file__).resolve().parents[2] / "trust/development"
ISSUE = Path(__file__).resolve().parents[2] / "tools/issue-credentials.sh"


def filled(message: str, path: object, code: int = 0) -> str:
    """An error with its path and code filled in."""
    return console.err(message.replace("%s", str(path)).replace("%i", str(code)))


def not_trusted(certificate: object, code: int) -> str:
    """The messages for a certificate that parses or verifies with this code."""
    text = filled(NOT_TRUSTED, certificate, code) + console.err(CHECK_PRODUCT)
    return text + (filled(CHECK_CHAIN, certificate) if code == 22 else "")


class SigningMaterialTest(EndToEndTest):
    """Nothing is written if the signing material is not good."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.dat", b"hello")
        self.config_file = self.write_config(INCLUDE_BIN)

    def generate(self, *options, **choices):
        return self.run_program(*self.generate_arguments(*options, config_file=self.config_file, **choices))

    def assert_refused(self, status: int, text: str, *options, **choices) -> None:
        run = self.generate(*options, **choices)
        self.assert_console(run, status, console.started(str(self.game), str(self.game)) + text)
        self.assert_files("bin", under=self.game)

    def assert_accepted(self, **choices) -> None:
        hashed = console.hashing("./bin/a.dat")
        text = self.collected_text(console.matched("./bin"), hashed)
        product = choices.get("product", PRODUCT)
        self.assert_console(self.generate(**choices), 0, text.replace(console.trusted(), console.trusted(product)))
        self.assert_catalogue(self.output / "base.bin", ["./bin/a.dat"], credentials=choices["credentials"])

    def unreadable(self):
        """Name and path of each thing that does not open or read like a file."""
        directory = self.directory / "a directory"
        directory.mkdir(exist_ok=True)
        return (("missing", "gone"), ("directory", directory), ("below a file", f"{self.config_file}/x"))


class Files(SigningMaterialTest):
    """Unreadable files, in the order in which they are read."""

    def test_crl_is_read_first(self) -> None:
        nothing = Credentials(Path("gone.key"), Path("gone.cer"))
        for name, path in self.unreadable():
            with self.subTest(crl=name):
                self.assert_refused(27, filled(CRL_MISSING, path), "-incrl", path, credentials=nothing)

    def test_certificate_is_read_second(self) -> None:
        for name, path in self.unreadable():
            with self.subTest(certificate=name):
                pair = Credentials(Path("gone.key"), Path(path))
                self.assert_refused(27, filled(CERTIFICATE_UNREAD, path), credentials=pair)
                self.assert_refused(27, filled(CERTIFICATE_UNREAD, path), "-gamedev", credentials=pair)

    def test_missing_key_comes_before_a_bad_certificate(self) -> None:
        for certificate in (GOOD.certificate, DAMAGED / "empty.cer"):
            pair = Credentials(Path("gone%s\\x.key"), certificate)
            self.assert_refused(35, filled(KEY_MISSING, pair.key), credentials=pair)
        pair = Credentials(Path(f"{self.config_file}/x"), GOOD.certificate)
        self.assert_refused(35, filled(KEY_MISSING, pair.key), credentials=pair)

    def test_fifos_do_not_stop_the_run(self) -> None:
        fifo = self.directory / "fifo"
        os.mkfifo(fifo)
        self.assert_refused(27, filled(CRL_MISSING, fifo), "-incrl", fifo)
        pair = Credentials(GOOD.key, fifo)
        self.assert_refused(27, filled(CERTIFICATE_UNREAD, fifo), credentials=pair)
        pair = Credentials(fifo, GOOD.certificate)
        self.assert_refused(13, filled(KEY_UNREAD, fifo, 13), credentials=pair)

    def test_directory_as_key(self) -> None:
        pair = Credentials(self.game, GOOD.certificate)
        self.assert_refused(13, filled(KEY_UNREAD, self.game, 13), credentials=pair)

    def test_unreadable_by_permission(self) -> None:
        pair = self.readable_credentials()
        crl = self.directory / "some.crl"
        crl.write_bytes(b"crl")
        self.become_unprivileged()
        cases = (
            (pair.key, 13, filled(KEY_UNREAD, pair.key, 13)),
            (pair.certificate, 27, filled(CERTIFICATE_UNREAD, pair.certificate)),
            (crl, 27, filled(CRL_MISSING, crl)),
        )
        for path, status, text in cases:
            with self.subTest(path=path.name):
                path.chmod(0)
                self.assert_refused(status, text, "-incrl", crl, credentials=pair)
                path.chmod(0o644)


class Keys(SigningMaterialTest):
    """Private keys."""

    def test_keys_that_cannot_be_used(self) -> None:
        cases = (
            (CREDENTIALS / "encrypted-key/base_private.key", 16),
            (DAMAGED / "empty.key", 15),
            (DAMAGED / "text.key", 15),
            (DAMAGED / "truncated.key", 15),
            (GOOD.certificate, 15),
        )
        for key, code in cases:
            with self.subTest(key=f"{key.parent.name}/{key.name}"):
                pair = Credentials(key, GOOD.certificate)
                self.assert_refused(code, filled(KEY_UNREAD, key, code), credentials=pair)

    def test_bad_key_comes_before_a_bad_certificate(self) -> None:
        pair = Credentials(DAMAGED / "text.key", DAMAGED / "empty.cer")
        self.assert_refused(15, filled(KEY_UNREAD, pair.key, 15), credentials=pair)

    def test_key_of_another_certificate(self) -> None:
        pair = Credentials(Credentials.of("other-key").key, GOOD.certificate)
        text = console.err(NO_PAIR.replace("%s", str(pair.certificate), 1).replace("%s", str(pair.key)))
        self.assert_refused(11, text, credentials=pair)
        self.assert_refused(11, text, "-gamedev", credentials=pair)

    def test_key_in_der_form(self) -> None:
        key = self.directory / "der.key"
        subprocess.run(
            ["openssl", "rsa", "-in", str(GOOD.key), "-outform", "DER", "-out", str(key)],
            check=True,
            capture_output=True,
        )
        self.assert_accepted(credentials=Credentials(key, GOOD.certificate))


class Certificates(SigningMaterialTest):
    """Certificates issued beforehand."""

    def test_certificates_that_are_not_trusted(self) -> None:
        cases = (
            ("expired", 30),
            ("expired-revoked", 30),
            ("revoked", 32),
            ("other-name", 31),
            ("foreign", 22),
            ("mod", 22),
        )
        for folder, code in cases:
            with self.subTest(folder=folder):
                pair = Credentials.of(folder)
                self.assert_refused(code, not_trusted(pair.certificate, code), credentials=pair)

    def test_certificates_that_are_no_der(self) -> None:
        for name in ("pem.cer", "truncated.cer", "empty.cer"):
            with self.subTest(name=name):
                pair = Credentials(GOOD.key, DAMAGED / name)
                self.assert_refused(20, not_trusted(pair.certificate, 20), credentials=pair)
                self.assert_refused(27, filled(NOT_PARSED, pair.certificate), "-gamedev", credentials=pair)

    def test_key_file_as_certificate(self) -> None:
        pair = Credentials(GOOD.key, GOOD.key)
        self.assert_refused(20, not_trusted(pair.certificate, 20), credentials=pair)

    def test_product_in_other_letters(self) -> None:
        for product in (PRODUCT.lower(), PRODUCT.upper()):
            with self.subTest(product=product):
                self.assert_accepted(credentials=GOOD, product=product)

    def test_product_that_differs_otherwise(self) -> None:
        products = [PRODUCT + " ", " " + PRODUCT, PRODUCT[:-1], PRODUCT + "x", "TestProduct43", "*", "%s%n", "é" * 7]
        for product in products + ["CN=" + PRODUCT, "*.42", "TestProduct42.", "\udcff"]:
            with self.subTest(product=product):
                self.assert_refused(31, not_trusted(GOOD.certificate, 31), product=product)

    def test_gamedev_takes_any_certificate(self) -> None:
        for folder in ("expired-revoked", "revoked", "other-name", "mod", "foreign"):
            with self.subTest(folder=folder):
                pair = Credentials.of(folder)
                run = self.generate("-gamedev", credentials=pair, product="Whatever")
                text = self.collected_text(console.matched("./bin"), console.hashing("./bin/a.dat"))
                self.assert_console(run, 0, text.replace(console.trusted(), ""))
                self.assert_runtime_conf(self.output / "runtime.conf", credentials=pair)


class IssuedHere(SigningMaterialTest):
    """Certificates of unusual kinds, issued by these tests."""

    def issue(self, *options: str) -> Credentials:
        folder = self.directory / "issued"
        command = ["bash", str(ISSUE), PRODUCT, str(folder), "--force", *options]
        subprocess.run(command, check=True, capture_output=True)
        return Credentials(folder / "base_private.key", folder / "base_public.cer")

    def test_alternative_names_stand_in_for_the_common_name(self) -> None:
        pair = self.issue("--alt-name", "other.example", "--alt-name", "Second.Name")
        self.assert_refused(31, not_trusted(pair.certificate, 31), credentials=pair)
        self.assert_accepted(credentials=pair, product="second.NAME")

    def test_wildcard_matches_one_label(self) -> None:
        pair = self.issue("--alt-name", "*.example")
        self.assert_accepted(credentials=pair, product="game.example")
        for product in ("a.game.example", "example", ".example"):
            self.assert_refused_after_cleaning(pair, product)

    def assert_refused_after_cleaning(self, pair: Credentials, product: str) -> None:
        run = self.generate(credentials=pair, product=product)
        text = console.started(str(self.game), str(self.game)) + not_trusted(pair.certificate, 31)
        self.assert_console(run, 31, text)

    def test_key_too_weak_for_trust(self) -> None:
        pair = self.issue("--bits", "1024")
        self.assert_refused(22, not_trusted(pair.certificate, 22), credentials=pair)

    def test_not_yet_valid(self) -> None:
        pair = self.issue("--not-before", "20900101000000Z", "--not-after", "20910101000000Z")
        self.assert_refused(22, not_trusted(pair.certificate, 22), credentials=pair)

    def test_authority_itself_is_no_game_certificate(self) -> None:
        pair = Credentials(GOOD.key, TRUST / "ca.der")
        self.assert_refused(31, not_trusted(pair.certificate, 31), credentials=pair)


if __name__ == "__main__":
    unittest.main()
