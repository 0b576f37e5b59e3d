"""Compares the digests of a SHA-256 kernel with those of hashlib.

usage: check_kernel_states.py COMMAND...

COMMAND runs kernel_states, under an emulator or not. Exits with 77 when its processor lacks the
instructions.
"""

import hashlib
import random
import subprocess
import sys
from typing import List, NamedTuple

BLOCK_BYTES = 64
MAX_STREAMS = 4
UNSUPPORTED = 77


class Job(NamedTuple):
    messages: List[bytes]
    offset: int
    most_blocks: int


def padded(message: bytes) -> bytes:
    """FIPS 180-4, 5.1.1."""
    zeros = -(len(message) + 1 + 8) % BLOCK_BYTES
    return message + b"\x80" + bytes(zeros) + (8 * len(message)).to_bytes(8, "big")


def encoded(job: Job) -> bytes:
    streams = [padded(message) for message in job.messages]
    head = bytes([len(streams), job.offset]) + job.most_blocks.to_bytes(2, "little")
    counts = b"".join((len(stream) // BLOCK_BYTES).to_bytes(2, "little") for stream in streams)
    return head + counts + b"".join(streams)


def make_jobs() -> List[Job]:
    """Every number of streams, of one length and of different lengths."""
    generator = random.Random(4)
    jobs: List[Job] = []

    def add(lengths: List[int], most_blocks: int) -> None:
        messages = [bytes(generator.getrandbits(8) for _ in range(length)) for length in lengths]
        jobs.append(Job(messages, len(jobs) % 16, most_blocks))

    for streams in range(1, MAX_STREAMS + 1):
        for length in range(301):
            add([length] * streams, 100)
            add([(length + 97 * stream) % 301 for stream in range(streams)], 1 + length % 5)
        for blocks in range(5, 40):
            for length in range(BLOCK_BYTES * blocks - 1, BLOCK_BYTES * blocks + 2):
                add([length] * streams, 1 + blocks % 7)
        for most_blocks in (1, 16, 65535):
            add([100000 + 12345 * stream for stream in range(streams)], most_blocks)
            add([0, 200000, 1, 65536][:streams], most_blocks)
        jobs.append(Job([b"abc", b"", b"a" * 1000000, b"abc"][:streams], 0, 65535))
        jobs.append(Job([b"a" * 1000000] * streams, 3, 65535))
    return jobs


def main(command: List[str]) -> int:
    jobs = make_jobs()
    result = subprocess.run(
        command, input=b"".join(map(encoded, jobs)), stdout=subprocess.PIPE, check=False)
    lines = result.stdout.decode("ascii", "replace").splitlines()
    name = lines[0] if lines else "no kernel"
    if result.returncode == UNSUPPORTED:
        print(f"{name}: not tested, for this processor lacks the instructions")
        return UNSUPPORTED
    if result.returncode != 0:
        print(f"{name}: FAILED, ended with status {result.returncode}")
        return 1

    messages = [(job, message) for job in jobs for message in job.messages]
    digests = lines[1:]
    if len(digests) != len(messages):
        print(f"{name}: FAILED, {len(digests)} digests of {len(messages)} messages")
        return 1
    wrong = [(job, message, digest) for (job, message), digest in zip(messages, digests)
             if digest != hashlib.sha256(message).hexdigest()]
    for job, message, digest in wrong[:5]:
        print(f"{len(message)} bytes in one of {len(job.messages)} streams, offset {job.offset}, "
              f"{job.most_blocks} blocks a call: {digest}")
    if wrong:
        print(f"{name}: FAILED, {len(wrong)} of {len(messages)} digests are wrong")
        return 1
    print(f"{name}: passed, {len(messages)} digests in 1 to {MAX_STREAMS} streams")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
