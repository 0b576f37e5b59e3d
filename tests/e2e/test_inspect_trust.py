"""sealkeeper-inspect trust: the built-in material, compared with openssl's output for the same files."""

import time
import unittest
from calendar import timegm

from credentials_inspection import TRUST, inspect, inspect_json, names, openssl


def value(line: str) -> str:
    """The text after the first "="."""
    return line.partition("=")[2]


def iso_time(line: str) -> str:
    """A time that openssl printed, in the form of the report."""
    moment = timegm(time.strptime(value(line), "%b %d %H:%M:%S %Y GMT"))
    return time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(moment))


def of_certificate(option: str) -> str:
    return openssl("x509", "-inform", "DER", "-in", TRUST / "ca.der", "-noout", *option.split())


def of_list(option: str) -> str:
    return openssl("crl", "-inform", "DER", "-in", TRUST / "crl.der", "-noout", *option.split())


class DevelopmentTrust(unittest.TestCase):
    """The tests' build has the development authority built in."""

    def test_report_is_what_openssl_prints(self) -> None:
        status, report = inspect_json("trust")
        authority, revocations = report["authority"], report["revocationList"]
        self.assertEqual(authority["sha256Fingerprint"], value(of_certificate("-fingerprint -sha256")))
        self.assertEqual(authority["serial"], value(of_certificate("-serial")))
        self.assertEqual(authority["notBefore"], iso_time(of_certificate("-startdate")))
        self.assertEqual(authority["notAfter"], iso_time(of_certificate("-enddate")))
        self.assertEqual(authority["key"], {"type": "RSA", "bits": 4096})
        self.assertEqual(revocations["sha256Fingerprint"], value(of_list("-fingerprint -sha256")))
        self.assertEqual(revocations["thisUpdate"], iso_time(of_list("-lastupdate")))
        self.assertEqual(revocations["nextUpdate"], iso_time(of_list("-nextupdate")))
        self.assertEqual(revocations["revokedCount"], of_list("-text").count("Serial Number:"))
        self.assertEqual(names(report), ["development-trust"])
        self.assertEqual((status, report["status"]), (1, 1))

    def test_text_has_the_same(self) -> None:
        status, output, errors = inspect("trust")
        self.assertEqual((status, errors), (1, ""))
        for line in (of_certificate("-fingerprint -sha256"), of_list("-fingerprint -sha256"), of_certificate("-serial")):
            self.assertIn(value(line), output)
        self.assertIn("warning: The built-in authority and its list are for development.", output)

    def test_warns_of_what_expires_within_the_days_that_are_given(self) -> None:
        self.assertEqual(
            names(inspect_json("trust", "--warn-days", "36525")[1]),
            ["authority-expires-soon", "list-expires-soon", "development-trust"],
        )

    def test_wrong_options(self) -> None:
        for arguments in (("trust", "--warn-days", "-1"), ("trust", "--warn-days", "x"), ("trust", "extra")):
            with self.subTest(arguments=arguments):
                status, output, errors = inspect(*arguments)
                self.assertEqual((status, output), (64, ""))
                self.assertTrue(errors.startswith("sealkeeper-inspect: "), errors)


if __name__ == "__main__":
    unittest.main()
