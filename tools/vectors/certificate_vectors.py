"""Vectors about the certificate beside a catalogue."""

from __future__ import annotations

import base64
from typing import Optional

from signed_files import ONE_FILE, catalogue, certificate_of, flipped, in_certificates
from vector import PRODUCT, Listing, Vector, Vectors

LISTINGS = [Listing("base.bin", 0, ["a.txt"])]


def vectors() -> Vectors:
    """All vectors of this module."""
    return untrusted() + products() + unusable()


def _vector(name: str, about: str, image: bytes, certificate: Optional[bytes], status: int) -> Vector:
    files = {"base.bin": image}
    if certificate is not None:
        files["base.cer"] = certificate
    return Vector(name, about, {**ONE_FILE, **in_certificates(files)}, status, listings=LISTINGS)


def untrusted() -> Vectors:
    """The signature is good, but its certificate is not trusted."""

    def vector(owner: str, about: str, status: int) -> Vector:
        return _vector(f"certificate-{owner}", about, catalogue(ONE_FILE, owner), certificate_of(owner), status)

    return [
        vector("expired", "Valid for the first day of 2026 alone.", 30),
        vector("expired-and-revoked", "Expired comes before revoked.", 30),
        vector("revoked", "Its serial number is on the authority's revocation list.", 32),
        vector("not-yet-valid", "Valid from 2075-01-01 on.", 22),
        vector("foreign", "Issued by an authority of the same name with another key.", 22),
        vector("mod", "A mod's, issued by the game's certificate. It names the mod, which is told first.", 31),
        vector("mod-named-as-the-game", "Issued by the game's certificate, and not by the authority.", 22),
        _vector(
            "certificate-before-signature",
            "Expired, and a bit of the signature is another: the certificate is looked at first.",
            flipped(catalogue(ONE_FILE, "expired"), 8),
            certificate_of("expired"),
            30,
        ),
    ]


def products() -> Vectors:
    """The requested product id is not that of the certificate, or is written differently."""

    def asking(name: str, about: str, product: str, status: int) -> Vector:
        verdicts = [("a.txt", 0)] if status == 0 else None
        return Vector(
            name, about, {}, status, verdicts, listings=LISTINGS, product=product, shares_files_of="good-no-runtime-conf"
        )

    def named(owner: str, about: str) -> Vector:
        return _vector(f"product-{owner}", about, catalogue(ONE_FILE, owner), certificate_of(owner), 31)

    return [
        asking("product-in-other-letters", "Upper and lower case are one.", PRODUCT.upper(), 0),
        asking("product-other-asked-for", "Another product id is asked for.", "AnotherProduct", 31),
        asking("product-longer", "The product id that is asked for has a blank at its end.", PRODUCT + " ", 31),
        named("other-product", "The certificate is another product's."),
        named("other-alt-name", "The common name is right, but a DNS name among the alternative names goes before it."),
    ]


def unusable() -> Vectors:
    """There is no readable certificate."""
    image = catalogue(ONE_FILE)
    der = certificate_of("game")
    pem = b"-----BEGIN CERTIFICATE-----\n" + base64.encodebytes(der) + b"-----END CERTIFICATE-----\n"
    return [
        _vector("certificate-missing", "There is no base.cer.", image, None, 27),
        _vector("certificate-empty", "base.cer has no byte.", image, b"", 20),
        _vector("certificate-pem", "base.cer is PEM. Readers take DER alone.", image, pem, 20),
        _vector("certificate-cut", "The first 600 bytes of base.cer.", image, der[:600], 20),
    ]
