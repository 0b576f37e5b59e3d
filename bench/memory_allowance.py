"""How much memory the program may use on a tree, given the catalogue of the tree."""
from dataclasses import dataclass

# The base allowance.
EXTRA_BYTES = 16 * 2**20
# For each worker and its buffers.
BYTES_PER_JOB = 2 * 2**20
# For each entry read from a catalogue, with an ordinary path.
BYTES_PER_READ_FILE = 200
# Longer paths may take more: two bytes for each further UTF-16 unit, as in the catalogue.
ORDINARY_PATH_UNITS = 30
BYTES_PER_UNIT = 2


def long_path_bytes(path: bytes) -> int:
    """The bytes that `path`, as the system gives it, takes beyond an ordinary path."""
    units = len(path.decode(errors="replace").encode("utf-16-le")) // 2
    return BYTES_PER_UNIT * max(0, units - ORDINARY_PATH_UNITS)


@dataclass(frozen=True)
class CatalogueSizes:
    """What the allowance depends on."""

    file_count: int
    # The size of the whole file, and of its entry block before and after compression.
    file_bytes: int
    entry_block_bytes: int
    compressed_bytes: int
    # The sum over all paths.
    long_path_bytes: int

    def allowed_for_generate(self, workers: int) -> int:
        """The entry block, the compressed block and the image are in memory when it is made."""
        return (self.entry_block_bytes + self.compressed_bytes + self.file_bytes + EXTRA_BYTES
                + workers * BYTES_PER_JOB)

    def allowed_for_verify(self, workers: int) -> int:
        return (self.file_bytes + self.file_count * BYTES_PER_READ_FILE + self.long_path_bytes
                + EXTRA_BYTES + workers * BYTES_PER_JOB)
