"""Compares the digests of a SHA-256 kernel with those of hashlib.

usage: check_kernel_states.py COMMAND...

COMMAND runs kernel_states, under an emulator or not. Exits with 77 when its processor lacks the
instructions.
"""

import hashlib
import random
import subprocess
import sys
from typing import List, NamedTuple, Tuple

BLOCK_BYTES = 64
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
    messages = [padded(message) for message in job.messages]
    head = bytes([len(messages), job.offset]) + job.most_blocks.to_bytes(2, "little")
    counts = b"".join((len(message) // BLOCK_BYTES).to_bytes(2, "little") for message in messages)
    return head + counts + b"".join(messages)


def make_jobs(max_lanes: int) -> List[Job]:
    """Every number of lanes, with equal and with different lengths."""
    generator = random.Random(4)
    jobs: List[Job] = []

    def add(lengths: List[int], most_blocks: int) -> None:
        messages = [bytes(generator.getrandbits(8) for _ in range(length)) for length in lengths]
        jobs.append(Job(messages, len(jobs) % 16, most_blocks))

    for lanes in range(1, max_lanes + 1):
        for length in range(301):
            add([length] * lanes, 100)
            add([(length + 97 * lane) % 301 for lane in range(lanes)], 1 + length % 5)
        for blocks in range(5, 40):
            for length in range(BLOCK_BYTES * blocks - 1, BLOCK_BYTES * blocks + 2):
                add([length] * lanes, 1 + blocks % 7)
        for most_blocks in (1, 16, 65535):
            add([100000 + 12345 * lane for lane in range(lanes)], most_blocks)
            add(([0, 200000, 1, 65536] * max_lanes)[:lanes], most_blocks)
        jobs.append(Job(([b"abc", b"", b"a" * 1000000, b"abc"] * max_lanes)[:lanes], 0, 65535))
        jobs.append(Job([b"a" * 1000000] * lanes, 3, 65535))
    return jobs


def run(command: List[str], jobs: List[Job]) -> Tuple[int, List[str]]:
    """The exit status and the output lines."""
    result = subprocess.run(
        command, input=b"".join(map(encoded, jobs)), stdout=subprocess.PIPE, check=False)
    return result.returncode, result.stdout.decode("ascii", "replace").splitlines()


def main(command: List[str]) -> int:
    status, lines = run(command, [])
    name = lines[0] if lines else "no kernel"
    if status == UNSUPPORTED:
        print(f"{name}: not tested, for this processor lacks the instructions")
        return UNSUPPORTED
    if status != 0:
        print(f"{name}: FAILED, ended with status {status}")
        return 1
    max_lanes = int(lines[1])
    jobs = make_jobs(max_lanes)
    status, lines = run(command, jobs)
    if status != 0:
        print(f"{name}: FAILED, ended with status {status}")
        return 1

    messages = [(job, message) for job in jobs for message in job.messages]
    digests = lines[2:]
    if len(digests) != len(messages):
        print(f"{name}: FAILED, {len(digests)} digests of {len(messages)} messages")
        return 1
    wrong = [(job, message, digest) for (job, message), digest in zip(messages, digests)
             if digest != hashlib.sha256(message).hexdigest()]
    for job, message, digest in wrong[:5]:
        print(f"{len(message)} bytes in one of {len(job.messages)} lanes, offset {job.offset}, "
              f"{job.most_blocks} blocks a call: {digest}")
    if wrong:
        print(f"{name}: FAILED, {len(wrong)} of {len(messages)} digests are wrong")
        return 1
    print(f"{name}: passed, {len(messages)} digests, for each number of lanes up to {max_lanes}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
