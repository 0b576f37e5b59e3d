"""How verify checks runtime.conf and base.cer, after the files of the game."""

import os
import unittest

import e2e_console as console
import e2e_read_back as texts
import openssl_signature
import runtime_conf_format
from e2e_support import CREDENTIALS, GOOD, PRODUCT, Credentials
from signed_game import SignedGameTest, changed_at, passed

UNTRUSTED = ("expired", "expired-revoked", "revoked", "other-name", "foreign", "mod")


class RuntimeConfTest(SignedGameTest):
    """A game whose only catalogue has its own certificate, so that base.cer matters to runtime.conf alone."""

    def setUp(self) -> None:
        super().setUp()
        self.entries = self.put_files({"a": b"a"})
        self.put_catalogue(self.entries, "mod1", credentials=Credentials.of("other-key"))
        self.conf = self.put_runtime_conf(2, b"Reporter", 3)
        self.certificate = self.output / "base.cer"
        self.use(GOOD)

    def use(self, credentials: Credentials) -> None:
        """Use the certificate of these as base.cer, and their key to sign runtime.conf."""
        self.certificate.write_bytes(credentials.certificate.read_bytes())
        self.put_runtime_conf(2, b"Reporter", 3, credentials=credentials)

    def assert_runtime(self, status: int, text: str, *options: str) -> None:
        """Verify; `text` follows the line that announces the check of runtime.conf."""
        begun = texts.runtime_begun(self.folder)
        self.assert_verified(status, passed(self.entries), begun + text, *options, name="mod1.bin")

    def assert_skipped(self) -> None:
        for options in ((), ("-gamedev",)):
            self.assert_verified(0, passed(self.entries), "", *options, name="mod1.bin")

    def assert_invalid(self) -> None:
        invalid = texts.runtime_invalid(self.folder)
        self.assert_runtime(22, console.trusted() + invalid)
        self.assert_runtime(22, invalid, "-gamedev")

    def assert_valid(self) -> None:
        valid = texts.runtime_valid(self.folder)
        self.assert_runtime(0, console.trusted() + valid)
        self.assert_runtime(0, valid, "-gamedev")


class Signatures(RuntimeConfTest):
    """The file itself."""

    def sign_plain(self, plain: bytes) -> None:
        """Write these bytes, of any length, with a valid signature."""
        self.conf.write_bytes(runtime_conf_format.sign(runtime_conf_format.scramble(plain), GOOD.key))

    def plain(self) -> bytes:
        return runtime_conf_format.unscramble(self.conf.read_bytes())

    def put_plain(self, plain: bytes) -> None:
        self.conf.write_bytes(runtime_conf_format.scramble(plain))

    def test_as_it_was_signed(self) -> None:
        self.assert_valid()

    def test_tampered(self) -> None:
        signed = self.conf.read_bytes()
        for offset in (0, 4, 259, 260, 1027, 1028, 1032, 1036, 1107):
            with self.subTest(offset=offset):
                self.conf.write_bytes(changed_at(signed, offset))
                self.assert_invalid()

    def test_settings_changed_before_scrambling(self) -> None:
        plain = self.plain()
        for offset in (0, 3, 4, 1032, 1036, 1040, 1104, 1107):
            with self.subTest(offset=offset):
                self.put_plain(changed_at(plain, offset))
                self.assert_invalid()

    def test_end_of_the_signature_area_is_not_signed(self) -> None:
        plain = self.plain()
        for offset in (260, 1027):
            with self.subTest(offset=offset):
                self.put_plain(changed_at(plain, offset))
                self.assert_valid()

    def test_signature_lengths(self) -> None:
        plain = self.plain()
        for length in (0, 1, 255, 257, 1024, 1025, 1032, 2**31, 2**32 - 1):
            with self.subTest(length=length):
                self.put_plain(plain[:1028] + length.to_bytes(4, "little") + plain[1032:])
                self.assert_invalid()

    def test_other_sizes(self) -> None:
        signed = self.conf.read_bytes()
        for size in (0, 1, 2, 3, 4, 1027, 1028, 1031, 1032, 1033, 1107):
            with self.subTest(size=size):
                self.conf.write_bytes(signed[:size])
                self.assert_invalid()
        for more in (b"\0", b"more", signed):
            with self.subTest(more=len(more)):
                self.conf.write_bytes(signed + more)
                self.assert_invalid()

    def test_longer_and_shorter_files_that_are_signed_as_they_are(self) -> None:
        """Only the signature over the actual length counts; the settings may be missing."""
        plain = self.plain()
        for name, content in (("longer", plain + b"more"), ("no settings", plain[:1032]), ("part", plain[:1050])):
            with self.subTest(name=name):
                self.sign_plain(content)
                self.assert_valid()

    def test_magic_and_version_are_not_looked_at(self) -> None:
        plain = self.plain()
        for name, offset in (("magic", 0), ("version", 1032)):
            with self.subTest(name=name):
                self.sign_plain(changed_at(plain, offset))
                self.assert_valid()

    def test_signature_over_the_scrambled_bytes(self) -> None:
        unsigned = runtime_conf_format.build(1)
        signature = openssl_signature.sign(unsigned, GOOD.key)
        self.conf.write_bytes(runtime_conf_format.with_signature(unsigned, signature))
        self.assert_invalid()

    def test_signed_by_another_key(self) -> None:
        for folder in ("other-key", "big-key"):
            with self.subTest(folder=folder):
                self.put_runtime_conf(credentials=Credentials.of(folder))
                self.assert_invalid()

    def test_catalogue_in_its_place(self) -> None:
        self.conf.write_bytes((self.output / "mod1.bin").read_bytes())
        self.assert_invalid()


class NotThere(RuntimeConfTest):
    """An unreadable runtime.conf is silently skipped."""

    def test_missing(self) -> None:
        self.conf.unlink()
        self.assert_skipped()

    def test_missing_with_its_certificate(self) -> None:
        self.conf.unlink()
        self.certificate.unlink()
        self.assert_skipped()

    def test_directory(self) -> None:
        self.conf.unlink()
        self.conf.mkdir()
        self.assert_skipped()

    def test_fifo_does_not_stop_the_run(self) -> None:
        self.conf.unlink()
        os.mkfifo(self.conf)
        self.assert_skipped()

    def test_unreadable_by_permission(self) -> None:
        self.become_unprivileged()
        self.conf.chmod(0)
        self.assert_skipped()


class Certificates(RuntimeConfTest):
    """base.cer, with and without the trust check."""

    def assert_both(self, status: int, text: str) -> None:
        self.assert_runtime(status, text)
        self.assert_runtime(status, text, "-gamedev")

    def test_missing(self) -> None:
        self.certificate.unlink()
        self.assert_both(27, texts.certificate_unread(self.folder))

    def test_directory(self) -> None:
        self.certificate.unlink()
        self.certificate.mkdir()
        self.assert_both(27, texts.certificate_unread(self.folder))

    def test_fifo_does_not_stop_the_run(self) -> None:
        self.certificate.unlink()
        os.mkfifo(self.certificate)
        self.assert_both(27, texts.certificate_unread(self.folder))

    def test_unreadable_by_permission(self) -> None:
        self.become_unprivileged()
        self.certificate.chmod(0)
        self.assert_both(27, texts.certificate_unread(self.folder))

    def test_no_der(self) -> None:
        for name in ("pem.cer", "truncated.cer", "empty.cer", "text.key"):
            with self.subTest(name=name):
                self.certificate.write_bytes((CREDENTIALS / "damaged" / name).read_bytes())
                self.assert_both(27, texts.certificate_not_parsed(self.folder))

    def test_not_trusted(self) -> None:
        for folder in UNTRUSTED:
            with self.subTest(folder=folder):
                self.use(Credentials.of(folder))
                self.assert_runtime(22, texts.certificate_not_trusted(self.folder, PRODUCT))

    def test_gamedev_skips_only_the_trust_check(self) -> None:
        for folder in UNTRUSTED:
            with self.subTest(folder=folder):
                self.use(Credentials.of(folder))
                self.assert_runtime(0, texts.runtime_valid(self.folder), "-gamedev")
                self.conf.write_bytes(changed_at(self.conf.read_bytes(), 1107))
                self.assert_runtime(22, texts.runtime_invalid(self.folder), "-gamedev")


class Statuses(RuntimeConfTest):
    """A failure here replaces the code of the files; a success does not."""

    def setUp(self) -> None:
        super().setUp()
        self.write("a", b"b")

    def assert_status(self, status: int, text: str) -> None:
        begun = texts.runtime_begun(self.folder)
        self.assert_verified(status, [("a", 26)], begun + text, name="mod1.bin")

    def test_valid(self) -> None:
        self.assert_status(26, console.trusted() + texts.runtime_valid(self.folder))

    def test_invalid(self) -> None:
        self.conf.write_bytes(b"")
        self.assert_status(22, console.trusted() + texts.runtime_invalid(self.folder))

    def test_no_certificate(self) -> None:
        self.certificate.unlink()
        self.assert_status(27, texts.certificate_unread(self.folder))

    def test_certificate_that_is_no_der(self) -> None:
        self.certificate.write_bytes(b"x")
        self.assert_status(27, texts.certificate_not_parsed(self.folder))

    def test_certificate_that_is_not_trusted(self) -> None:
        self.use(Credentials.of("foreign"))
        self.assert_status(22, texts.certificate_not_trusted(self.folder, PRODUCT))


if __name__ == "__main__":
    unittest.main()
