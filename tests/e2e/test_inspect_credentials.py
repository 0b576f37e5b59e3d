"""sealkeeper-inspect credentials: the real cause, and the exit status that generate really has.

Each broken credential is also given to generate, and the report must state the status of that run.
"""

import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path

from credentials_inspection import INSPECT, ISSUE, ROOT, TRUST, inspect, inspect_json, names, openssl
from e2e_support import CREDENTIALS, GOOD, INCLUDE_BIN, PRODUCT, Credentials, EndToEndTest

DAMAGED = CREDENTIALS / "damaged"
FORMS = CREDENTIALS / "key-forms"
# Of an authority with the name of the built-in one and another key.
FOREIGN_LIST = CREDENTIALS / "foreign-authority" / "crl.der"


class CredentialsTest(EndToEndTest):
    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.dat", b"hello")
        self.config_file = self.write_config(INCLUDE_BIN)

    def generate(self, pair: Credentials, product: str = PRODUCT, crl=None) -> int:
        """The exit status of the real program."""
        options = [] if crl is None else ["-incrl", crl]
        arguments = self.generate_arguments(
            *options, credentials=pair, product=product, config_file=self.config_file
        )
        return self.run_program(*arguments).status

    def report(self, pair: Credentials, product: str = PRODUCT, crl=None):
        options = [] if crl is None else ["--crl", crl]
        return inspect_json(
            "credentials", "--cert", pair.certificate, "--key", pair.key, "--product", product, *options
        )

    def own(self, path: Path) -> Path:
        """A copy that only its owner may read."""
        folder = self.directory / f"own-{len(list(self.directory.iterdir()))}"
        folder.mkdir()
        copy = Path(shutil.copy(path, folder))
        copy.chmod(0o600)
        return copy

    def issue(self, *options: str) -> Credentials:
        folder = self.directory / f"issued-{len(list(self.directory.iterdir()))}"
        command = ["bash", str(ISSUE), PRODUCT, str(folder), *options]
        subprocess.run(command, check=True, capture_output=True)
        return Credentials(folder / "base_private.key", folder / "base_public.cer")

    def issue_weak_digest(self) -> Credentials:
        request, certificate = self.directory / "request.pem", self.directory / "sha1.cer"
        openssl("req", "-new", "-key", GOOD.key, "-subj", f"/CN={PRODUCT}", "-out", request)
        openssl(
            *("x509", "-req", "-in", request, "-set_serial", "5", "-days", "99", "-sha1", "-outform", "DER"),
            *("-CAform", "DER", "-CA", TRUST / "ca.der", "-CAkey", TRUST / "ca_private.key", "-out", certificate),
        )
        return Credentials(GOOD.key, certificate)


class StatusOfGenerate(CredentialsTest):
    """A table of broken credentials: the findings and the status, compared with a real run."""

    def test_each_broken_credential(self) -> None:
        good = self.own(GOOD.key)
        fifo = self.directory / "fifo"
        os.mkfifo(fifo)
        damaged = bytearray(GOOD.certificate.read_bytes())
        damaged[4] ^= 1
        (self.directory / "inner.cer").write_bytes(damaged)
        request = self.directory / "request.der"
        openssl("req", "-new", "-key", GOOD.key, "-subj", "/CN=x", "-outform", "DER", "-out", request)

        def kind(name: str) -> Credentials:
            return Credentials(self.own(Credentials.of(name).key), Credentials.of(name).certificate)

        def certificate(path: Path) -> Credentials:
            return Credentials(good, path)

        def key(path: Path) -> Credentials:
            return Credentials(path, GOOD.certificate)

        cases = (
            ("expired", kind("expired"), {}, ["certificate-expired"]),
            ("revoked", kind("revoked"), {}, ["certificate-revoked"]),
            ("expired and revoked", kind("expired-revoked"), {}, ["certificate-expired", "certificate-revoked"]),
            ("other product", kind("other-name"), {}, ["wrong-product"]),
            ("space", certificate(GOOD.certificate), {"product": PRODUCT + " "}, ["wrong-product"]),
            ("other authority", kind("foreign"), {}, ["foreign-authority"]),
            ("mod", kind("mod"), {}, ["other-issuer"]),
            ("self-signed, weak", kind("weak-key"), {}, ["self-signed", "weak-key"]),
            ("weak key", self.issue("--bits", "1024"), {}, ["weak-key"]),
            ("weak digest", self.issue_weak_digest(), {}, ["weak-digest", "key-mode"]),
            (
                "not yet valid",
                self.issue("--not-before", "20900101000000Z", "--not-after", "20910101000000Z"),
                {},
                ["certificate-not-yet-valid"],
            ),
            ("DNS name", self.issue("--alt-name", "other.example"), {}, ["wrong-product"]),
            ("PEM", certificate(DAMAGED / "pem.cer"), {}, ["certificate-pem"]),
            ("cut off", certificate(DAMAGED / "truncated.cer"), {}, ["not-a-certificate"]),
            ("empty", certificate(DAMAGED / "empty.cer"), {}, ["not-a-certificate"]),
            ("damaged", certificate(self.directory / "inner.cer"), {}, ["not-a-certificate"]),
            ("request", certificate(request), {}, ["not-a-certificate"]),
            ("authority", certificate(TRUST / "ca.der"), {}, ["wrong-product", "no-pair"]),
            ("no certificate", certificate(self.directory / "gone"), {}, ["certificate-unread"]),
            ("swapped", Credentials(GOOD.certificate, good), {}, ["swapped"]),
            ("password", key(self.own(FORMS / "encrypted-pkcs8.pem")), {}, ["key-password"]),
            ("password in DER", key(self.own(FORMS / "encrypted-pkcs8.der")), {}, ["key-password"]),
            ("Camellia", key(self.own(FORMS / "camellia-pkcs1.pem")), {}, ["key-password"]),
            ("public key", key(FORMS / "public.pem"), {}, ["not-a-key"]),
            ("no key in it", key(DAMAGED / "text.key"), {}, ["not-a-key"]),
            ("cut off key", key(self.own(DAMAGED / "truncated.key")), {}, ["key-damaged"]),
            ("missing key", key(self.directory / "gone.key"), {}, ["key-missing"]),
            ("directory as key", key(self.game), {}, ["key-unread"]),
            ("FIFO as key", key(fifo), {}, ["key-unread"]),
            ("key of another", key(self.own(Credentials.of("other-key").key)), {}, ["no-pair"]),
            ("missing list", certificate(GOOD.certificate), {"crl": self.directory / "gone"}, ["list-unread"]),
        )
        seen = set()
        for name, pair, options, expected in cases:
            with self.subTest(name=name):
                status, report = self.report(pair, **options)
                self.assertEqual(names(report), expected)
                self.assertEqual(report["generate"]["code"], self.generate(pair, **options))
                self.assertEqual((status, report["status"]), (2, 2))
                codes = [finding["code"] for finding in report["findings"] if "code" in finding]
                self.assertIn(report["generate"]["code"], codes)
                for finding in report["findings"]:
                    self.assertTrue(finding["cure"])
                seen.add(report["generate"]["code"])
        # 12 and 34 do not come from credentials, and openssl writes no key that leads to 14.
        self.assertLessEqual({11, 13, 15, 16, 20, 22, 27, 30, 31, 32, 35}, seen)

    def test_good_ones(self) -> None:
        good = self.own(GOOD.key)
        cases = (
            (Credentials(good, GOOD.certificate), {}, [], 0),
            (GOOD, {}, ["key-mode"], 1),
            (Credentials(good, GOOD.certificate), {"product": PRODUCT.lower()}, [], 0),
            (Credentials(good, GOOD.certificate), {"crl": TRUST / "crl.der"}, [], 0),
            (Credentials(good, GOOD.certificate), {"crl": FOREIGN_LIST}, ["given-list-signature"], 1),
            (Credentials(good, GOOD.certificate), {"crl": DAMAGED / "pem.cer"}, ["not-a-list"], 1),
            (Credentials(self.own(FORMS / "pkcs1.der"), GOOD.certificate), {}, [], 0),
        )
        for pair, options, expected, expected_status in cases:
            with self.subTest(pair=pair, options=options):
                status, report = self.report(pair, **options)
                self.assertEqual((names(report), status), (expected, expected_status))
                self.assertEqual(report["generate"], {"code": 0, "result": "Ok"})
                self.assertEqual(self.generate(pair, **options), 0)

    def test_files_that_the_user_must_not_read(self) -> None:
        pair = self.readable_credentials()
        crl = Path(shutil.copy(TRUST / "crl.der", self.directory))
        program = Path(shutil.copy(INSPECT, self.directory))
        self.become_unprivileged()
        cases = ((crl, "list-unread"), (pair.certificate, "certificate-unread"), (pair.key, "key-unread"))
        for path, name in cases:
            with self.subTest(name=name):
                mode = path.stat().st_mode
                path.chmod(0)
                arguments = ("--cert", pair.certificate, "--key", pair.key, "--crl", crl, "--product", PRODUCT)
                status, report = inspect_json("credentials", *arguments, program=program, **self._identity())
                self.assertEqual((status, report["findings"][0]["name"]), (2, name))
                self.assertIn("Permission denied", report["findings"][0]["message"])
                self.assertEqual(report["generate"]["code"], self.generate(pair, crl=crl))
                path.chmod(mode)


class Cures(CredentialsTest):
    """Runs the commands in the report unchanged. What they write is then accepted."""

    def run_cure(self, report, name: str, typed: str = "") -> None:
        (command,) = [finding["command"] for finding in report["findings"] if finding["name"] == name]
        # In a session without a terminal, openssl reads answers from standard input.
        subprocess.run(
            ["sh", "-c", command],
            input=typed.encode(),
            check=True,
            capture_output=True,
            start_new_session=True,
            timeout=60,
        )

    def test_pem_certificate(self) -> None:
        folder = self.directory / "a 'folder'"
        folder.mkdir()
        pem = Path(shutil.copy(DAMAGED / "pem.cer", folder))
        key = self.own(GOOD.key)
        _, report = self.report(Credentials(key, pem))
        self.run_cure(report, "certificate-pem")
        mended = Credentials(key, Path(f"{pem}.der"))
        self.assertEqual(self.report(mended)[0], 0)
        self.assertEqual(self.generate(mended), 0)

    def test_certificates_in_pkcs7(self) -> None:
        p7 = self.directory / "certificates.p7b"
        for form in ("PEM", "DER"):
            openssl("crl2pkcs7", "-nocrl", "-certfile", DAMAGED / "pem.cer", "-outform", form, "-out", p7)
            _, report = self.report(Credentials(GOOD.key, p7))
            self.run_cure(report, "not-a-certificate")
            self.assertEqual(Path(f"{p7}.der").read_bytes(), GOOD.certificate.read_bytes())

    def test_keys_with_a_password(self) -> None:
        for form in ("encrypted-pkcs8.pem", "encrypted-pkcs8.der", "encrypted-pkcs1.pem", "camellia-pkcs1.pem"):
            with self.subTest(form=form):
                key = self.own(FORMS / form)
                _, report = self.report(Credentials(key, GOOD.certificate))
                self.run_cure(report, "key-password", "secret\n")
                mended = Credentials(Path(f"{key}.new"), GOOD.certificate)
                self.assertEqual(self.report(mended)[0], 0, "its mode is good too")
                self.assertEqual(self.generate(mended), 0)

    def test_key_in_pkcs12(self) -> None:
        key = self.own(FORMS / "pkcs12")
        _, report = self.report(Credentials(key, GOOD.certificate))
        self.run_cure(report, "not-a-key", "secret\n")
        self.assertEqual(self.report(Credentials(Path(f"{key}.new"), GOOD.certificate))[0], 0)

    def test_key_in_utf16(self) -> None:
        key = self.own(GOOD.key)
        key.write_bytes(key.read_text().encode("utf-16"))
        _, report = self.report(Credentials(key, GOOD.certificate))
        self.run_cure(report, "not-a-key")
        self.assertEqual(self.report(Credentials(Path(f"{key}.new"), GOOD.certificate))[0], 0)

    @unittest.skipUnless(shutil.which("ssh-keygen"), "there is no ssh-keygen")
    def test_key_of_openssh(self) -> None:
        key = self.own(GOOD.key)
        subprocess.run(["ssh-keygen", "-p", "-N", "", "-f", str(key)], check=True, capture_output=True)
        _, report = self.report(Credentials(key, GOOD.certificate))
        self.assertEqual(report["privateKey"]["kind"], "a private key of OpenSSH")
        self.run_cure(report, "not-a-key")
        self.assertEqual(self.report(Credentials(Path(f"{key}.new"), GOOD.certificate))[0], 0)

    def test_open_key(self) -> None:
        key = self.own(GOOD.key)
        key.chmod(0o664)
        _, report = self.report(Credentials(key, GOOD.certificate))
        self.run_cure(report, "key-mode")
        self.assertEqual(self.report(Credentials(key, GOOD.certificate))[0], 0)

    def test_list_in_pem(self) -> None:
        crl = self.directory / "list.crl"
        openssl("crl", "-inform", "DER", "-in", TRUST / "crl.der", "-out", crl)
        _, report = self.report(GOOD, crl=crl)
        self.run_cure(report, "list-pem")
        self.assertEqual(Path(f"{crl}.der").read_bytes(), (TRUST / "crl.der").read_bytes())


class Report(CredentialsTest):
    def test_facts_are_what_openssl_prints(self) -> None:
        _, report = self.report(GOOD, crl=TRUST / "crl.der")
        told = openssl("x509", "-inform", "DER", "-in", GOOD.certificate, "-noout", "-serial")
        self.assertEqual(report["certificate"]["serial"], told.partition("=")[2])
        self.assertEqual(report["certificate"]["commonNames"], [PRODUCT])
        self.assertEqual(report["certificate"]["chain"], "authority")
        self.assertEqual(report["certificate"]["revocation"], "not revoked")
        self.assertTrue(report["privateKey"]["isPair"])
        self.assertEqual([entry["serial"] for entry in report["revocationList"]["revoked"]], ["0DEAD001", "0DEAD002"])

    def test_text(self) -> None:
        status, output, errors = inspect("credentials", "--cert", Credentials.of("mod").certificate)
        self.assertEqual((status, errors), (2, ""))
        self.assertIn("  chain        not issued by the built-in authority\n", output)
        self.assertIn("verify cannot check a mod's own certificate", output)
        self.assertTrue(output.endswith("Generate would end with 22 (MbedTlsX509VerifyFailed).\n"), output)

    def test_no_byte_of_a_key_is_shown(self) -> None:
        secret = GOOD.key.read_text().splitlines()[1]
        for arguments in (("--cert", GOOD.key), ("--cert", GOOD.certificate, "--key", DAMAGED / "truncated.key")):
            for form in ((), ("--json",)):
                _, output, errors = inspect("credentials", *arguments, *form)
                self.assertNotIn(secret[:16], output + errors)

    def test_nothing_is_written(self) -> None:
        before = sorted(self.directory.rglob("*"))
        self.report(GOOD)
        self.assertEqual(sorted(self.directory.rglob("*")), before)

    def test_wrong_options(self) -> None:
        for arguments, word in (
            ((), "--cert"), (("--cert", "a", "--kye", "b"), "--kye"), (("--cert",), "--cert"),
            (("--cert", GOOD.certificate, "--product", ""), "a product id is required"),
            (("--cert", GOOD.certificate, "--product="), "--product"),
        ):
            with self.subTest(arguments=arguments):
                status, output, errors = inspect("credentials", *arguments)
                self.assertEqual((status, output), (64, ""))
                self.assertIn(word, errors)


class Pages(unittest.TestCase):
    def test_every_finding_stands_on_a_page(self) -> None:
        made = re.compile(r'Make(?:Error|Warning)\(\s*(?:is\w+ \? )?"([a-z-]+)"(?: : "([a-z-]+)")?')
        sources = "".join(path.read_text() for path in (ROOT / "src/inspect/credentials").glob("*_findings.cpp"))
        found = {name for names_of_one in made.findall(sources) for name in names_of_one if name}
        # The only one named through a constant.
        found.add("wrong-product")
        pages = "".join((ROOT / f"docs/inspect/{page}.md").read_text() for page in ("credentials", "trust"))
        rows = "".join(line.split("|")[1] for line in pages.splitlines() if line.startswith("| `"))
        # Members of the JSON report are not names of findings.
        members = {"authority", "certificate", "findings", "generate", "status"}
        self.assertEqual(set(re.findall(r"`([a-z-]+)`", rows)) - members, found)


if __name__ == "__main__":
    unittest.main()
