"""The documents as an installation and a Debian package have them: each link leads to something that is there too."""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import List, Set

from document_links import is_dead, local_links

ROOT = Path(__file__).resolve().parents[2]

# A project without a language, which configures at once.
PROJECT = """
cmake_minimum_required(VERSION 3.21)
project(sealkeeper VERSION 98.7.6 LANGUAGES NONE)
set(CMAKE_INSTALL_LIBDIR lib)
list(APPEND CMAKE_MODULE_PATH "{root}/cmake")
include(TrustMaterial)
include(Installation)
include(ManualPages)
sealkeeper_install_documents()
sealkeeper_install_tools()
sealkeeper_install_manual()
"""
DEVELOPMENT = ROOT / "trust/development"
DEVELOPMENT_TRUST = (f"-DSEALKEEPER_TRUST_CA={DEVELOPMENT}/ca.der", f"-DSEALKEEPER_TRUST_CRL={DEVELOPMENT}/crl.der")
COMMON_LICENSE = "/usr/share/common-licenses/Apache-2.0"

# What the installed pages name and only the sources have. A link to anything else that is not installed is a mistake.
ONLY_IN_THE_SOURCES = {"ARCHITECTURE.md", "CONTRIBUTING.md", "docs/man/", "docs/vectors/", "fuzz/README.md",
                       "packaging/homebrew/sealkeeper.rb", "test vectors"}


@unittest.skipUnless(shutil.which("cmake") and shutil.which("ninja"), "there is no cmake or no ninja")
class Installed(unittest.TestCase):
    """A prefix with what is installed beside the programs and the manual."""

    # Those that lead out of the prefix, to what only a system with the package has.
    links_to_the_system: Set[str] = set()

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.prefix = self.folder / "usr"
        self.documents = self.prefix / "share/doc/sealkeeper"

    def run_quietly(self, *command: "str | Path") -> str:
        result = subprocess.run(command, capture_output=True, check=False, text=True)
        self.assertEqual((result.returncode, result.stderr), (0, ""), result.stdout)
        return result.stdout

    def install(self, *options: str) -> None:
        source, build = self.folder / "source", self.folder / "build"
        source.mkdir()
        (source / "CMakeLists.txt").write_text(PROJECT.format(root=ROOT))
        self.run_quietly("cmake", "-G", "Ninja", "-S", source, "-B", build, "-DSEALKEEPER_SCDOC=", *options)
        self.run_quietly("cmake", "--install", build, "--prefix", self.prefix)

    def dead_links(self) -> List[str]:
        """Of all pages, except for those in links_to_the_system."""
        pages = sorted(self.documents.rglob("*.md"))
        self.assertGreater(len(pages), 15)
        return [f"{page.relative_to(self.documents)}: {link}" for page in pages for link in local_links(page)
                if is_dead(page, link) and link not in self.links_to_the_system]

    def named_as_sources(self) -> Set[str]:
        """The texts of what were links in the sources."""
        return {name for page in self.documents.rglob("*.md")
                for name in re.findall(r"([\w./]+(?: vectors)?) \(in the sources\)", page.read_text(encoding="utf-8"))}


class Documents(Installed):
    def test_each_link_leads_somewhere(self) -> None:
        self.install(*DEVELOPMENT_TRUST)
        self.assertEqual(self.dead_links(), [])

    def test_what_stays_in_the_sources_is_said_to(self) -> None:
        self.install(*DEVELOPMENT_TRUST)
        self.assertEqual(self.named_as_sources(), ONLY_IN_THE_SOURCES)

    def test_all_else_is_as_in_the_sources(self) -> None:
        self.install(*DEVELOPMENT_TRUST)
        for name in ("LICENSE", "NOTICES", "SECURITY.md", "docs/configuration-file.md", "docs/inspect/rules.md",
                     "examples/include-list.cfg", "trust/README.md"):
            self.assertEqual((self.documents / name).read_bytes(), (ROOT / name).read_bytes(), name)

    def test_pages_of_others_stay(self) -> None:
        """The directory may be one that several projects share."""
        text = "[dead](gone.md)"
        others = [self.documents / "other.md", self.documents / "docs/other.md"]
        for page in others:
            page.parent.mkdir(parents=True, exist_ok=True)
            page.write_text(text, encoding="utf-8")
        self.install(*DEVELOPMENT_TRUST)
        self.assertEqual([page.read_text(encoding="utf-8") for page in others], [text, text])

    def test_installed_again(self) -> None:
        """Over the pages that an installation has already changed."""
        self.install(*DEVELOPMENT_TRUST)
        self.run_quietly("cmake", "--install", self.folder / "build", "--prefix", self.prefix)
        self.assertEqual(self.dead_links(), [])
        self.assertEqual(self.named_as_sources(), ONLY_IN_THE_SOURCES)


class IssuingCredentials(Installed):
    def setUp(self) -> None:
        super().setUp()
        self.shared = self.prefix / "share/sealkeeper"

    def issue(self, *options: "str | Path") -> "subprocess.CompletedProcess[str]":
        return subprocess.run([self.shared / "tools/issue-credentials.sh", "game", self.folder / "credentials",
                               "--bits", "1024", *options], capture_output=True, check=False, text=True)

    def test_with_the_development_authority(self) -> None:
        self.install(*DEVELOPMENT_TRUST)
        issued = self.issue()
        self.assertEqual(issued.returncode, 0, issued.stderr)
        self.run_quietly("openssl", "x509", "-in", self.folder / "credentials/base_public.cer", "-inform", "DER", "-noout")

    def test_with_an_own_one(self) -> None:
        """A program that does not trust the development authority comes without it."""
        own = self.folder / "own"
        own.mkdir()
        for name in ("ca.der", "crl.der"):
            (own / name).write_bytes((DEVELOPMENT / name).read_bytes()[:-1] + b"x")
        self.install(f"-DSEALKEEPER_TRUST_CA={own}/ca.der", f"-DSEALKEEPER_TRUST_CRL={own}/crl.der")
        self.assertFalse((self.shared / "trust").exists())
        self.assertIn("is not a directory", self.issue().stderr)
        issued = self.issue("--authority", DEVELOPMENT)
        self.assertEqual(issued.returncode, 0, issued.stderr)


@unittest.skipUnless(sys.platform == "linux", "packages are made on Debian")
class DebianPackage(Installed):
    """After what CPack does to the files of a package."""

    # test_licence_is_that_of_the_system says where it leads.
    links_to_the_system = {"LICENSE"}

    def pack(self, name: str) -> None:
        self.install(*DEVELOPMENT_TRUST)
        self.run_quietly("cmake", f"-DCPACK_TEMPORARY_INSTALL_DIRECTORY={self.folder}",
                         "-DCPACK_PACKAGING_INSTALL_PREFIX=/usr", f"-DCPACK_PACKAGE_NAME={name}",
                         "-DCPACK_PACKAGE_VERSION=98.7.6", "-DCPACK_PACKAGE_CONTACT=Nobody <nobody@sealkeeper.example>",
                         "-P", ROOT / "cmake/DebianDocuments.cmake")
        self.documents = self.prefix / "share/doc" / name

    def test_each_link_leads_somewhere(self) -> None:
        self.pack("sealkeeper")
        self.assertEqual(self.dead_links(), [])

    def test_each_link_leads_somewhere_from_the_development_package(self) -> None:
        self.pack("sealkeeper-development")
        self.assertEqual(self.dead_links(), [])

    def test_licence_is_that_of_the_system(self) -> None:
        self.pack("sealkeeper")
        link = os.readlink(self.documents / "LICENSE")
        self.assertEqual(os.path.normpath(Path("/usr/share/doc/sealkeeper") / link), COMMON_LICENSE)

    def test_copyright(self) -> None:
        self.pack("sealkeeper-development")
        text = (self.documents / "copyright").read_text(encoding="utf-8")
        self.assertIn(COMMON_LICENSE, text)
        self.assertIn((ROOT / "NOTICES").read_text(encoding="utf-8"), text)


if __name__ == "__main__":
    unittest.main()
