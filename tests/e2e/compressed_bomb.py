"""A few bytes that decompress to many."""

from __future__ import annotations

from independent_test_support import block_of_codes

MIB = 1024 * 1024


def bomb(begin: bytes, megabytes: int) -> bytes:
    """A compressed block that decompresses to `begin` and at least so many MiB of zero bytes.

    Each code stands for one zero byte more than the previous one until the dictionary is full. Then the longest string
    is repeated.
    """
    first_new = 257 + len(begin)
    growing = [*begin, 0, *range(first_new, 4095)]
    if len(growing) % 2 != 0:
        growing.append(4094)
    longest = 4095 - first_new + 1
    pairs = megabytes * MIB // (2 * longest) + 1
    return block_of_codes(growing) + b"\xfe\xef\xff" * pairs
