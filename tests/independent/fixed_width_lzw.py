"""The compression of a catalogue's entry block: LZW with codes that are always 12 bits wide.

The body wears the three-byte header of the classic Unix `compress` (.Z): 1F 9D and a flag byte, here
0x80 for block mode plus 12 for the code width. `uncompress` and `gzip -d` recognise that header and
then misread what follows: in a classic .Z file the low flag bits are the *largest* width, the first
codes are 9 bits wide, and the width grows by one whenever the dictionary outgrows it. Here every code
has 12 bits from the first to the last, so those programs cut the bit stream at the wrong places. Nor is
the clear code ever sent: code 256 is only kept free, and a full dictionary stays as it is.

Both directions keep a plain dictionary of byte strings. That is slower than numbering (prefix, byte)
pairs but can be checked by eye against the rule, which is what a reference is for. Ten megabytes take
a few seconds.
"""

from __future__ import annotations

from typing import Dict, Iterable, Iterator, List

from format_error import FormatError

MAGIC = b"\x1f\x9d"
BLOCK_MODE_FLAG = 0x80
CODE_WIDTH_MASK = 0x1F
CODE_WIDTH = 12
HEADER = MAGIC + bytes([BLOCK_MODE_FLAG | CODE_WIDTH])

FIRST_NEW_CODE = 257
"""256 is where a classic .Z file has its clear code; it is never given to a string and never sent."""

CODE_LIMIT = 4095
"""No string gets this code: 4094 is the last one ever assigned."""


def compress(data: bytes) -> bytes:
    """Return the compressed form of `data`.

    Nothing but the header stands for no data at all: there is no first byte whose code could be sent.
    """
    return HEADER + _pack(_codes_of(data))


def decompress(block: bytes) -> bytes:
    """Return the data that `block` holds; nothing when the block does not begin with the magic.

    Only the width in the flag byte counts, not its block mode bit. Raises FormatError for a block that
    ends before the flag byte, a width of 0, or a code that no compressor can have sent.
    """
    if block[: len(MAGIC)] != MAGIC:
        return b""
    if len(block) < len(HEADER):
        raise FormatError("the compressed block ends before its flag byte")
    width = block[len(MAGIC)] & CODE_WIDTH_MASK
    if width == 0:
        raise FormatError("the compressed block says that its codes are 0 bits wide")
    return b"".join(_strings_of(_unpack(block[len(HEADER):], width)))


def _codes_of(data: bytes) -> Iterator[int]:
    """Yield the code of the longest known string at each place, learning one longer string each time."""
    if not data:
        return
    codes: Dict[bytes, int] = {bytes([value]): value for value in range(256)}
    next_code = FIRST_NEW_CODE
    known = b""
    for value in data:
        byte = bytes((value,))
        longer = known + byte
        if longer in codes:
            known = longer
            continue
        yield codes[known]
        if next_code < CODE_LIMIT:
            codes[longer] = next_code
            next_code += 1
        known = byte
    yield codes[known]


def _strings_of(codes: Iterable[int]) -> Iterator[bytes]:
    """Yield the string of each code, learning the strings in the order in which the compressor did.

    The compressor knows a new string as soon as it has sent the code before it; here the string's last
    byte is only known with the next code, so this dictionary is always one string behind. A code equal
    to the next one to assign therefore names that very string: the previous one plus its own first byte.
    """
    strings: Dict[int, bytes] = {value: bytes([value]) for value in range(256)}
    next_code = FIRST_NEW_CODE
    previous = b""
    for index, code in enumerate(codes):
        can_learn = previous != b"" and next_code < CODE_LIMIT
        if code in strings:
            current = strings[code]
        elif can_learn and code == next_code:
            current = previous + previous[:1]
        else:
            raise FormatError(f"code number {index} is {code}, which stands for no string yet")
        if can_learn:
            strings[next_code] = previous + current[:1]
            next_code += 1
        yield current
        previous = current


def _pack(codes: Iterable[int]) -> bytes:
    """Pack 12-bit codes, low bits first; the last byte is padded with zero bits."""
    packed: List[int] = []
    pending = 0
    pending_bits = 0
    for code in codes:
        pending |= code << pending_bits
        pending_bits += CODE_WIDTH
        while pending_bits >= 8:
            packed.append(pending & 0xFF)
            pending >>= 8
            pending_bits -= 8
    if pending_bits > 0:
        packed.append(pending)
    return bytes(packed)


def _unpack(packed: bytes, width: int) -> Iterator[int]:
    """Yield the codes of `width` bits in `packed`; bits too few for a code are padding."""
    mask = (1 << width) - 1
    pending = 0
    pending_bits = 0
    for value in packed:
        pending |= value << pending_bits
        pending_bits += 8
        while pending_bits >= width:
            yield pending & mask
            pending >>= width
            pending_bits -= width
