"""The scenes of the sweep: an action, its game, and the signed files that exist before the run.

The scenes are made once. Each worker runs on its own copy, which is reset before each run.
"""

from __future__ import annotations

import os
import random
import shutil
import subprocess
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable, Dict, List, Mapping, Optional, Sequence

PRODUCT = "TestProduct42"
# In an argument: the folder of the scene. With a relative path, generate writes beside the game.
FOLDER = "{folder}"
OUTPUT_FOLDER = "Quorvane/Certificates"
OUTPUTS = ("base.bin", "base.cer", "runtime.conf")
GENERATE, VERIFY, LIST = "generate", "verify", "list"
# The companion's scenes have the names of its commands.
INSPECT = "inspect"
PROGRAM, COMPANION = "sealkeeper", "sealkeeper-inspect"
# The second chunk of the file is small.
CHUNK_BYTES = 4 * 1024 * 1024
BIG_BYTES = CHUNK_BYTES + 5000
BIG_FILE = "data/big.pak"
# Over the threshold of the configuration, 10 MB.
SKIPPED_FILE = "data/huge.bin"
SKIPPED_BYTES = 11_000_000

EXCLUDE_CONFIG = """config_info { version = 2; }
search_options {
    exclude_paths = ["temp*", "data/private.txt", "Quorvane"];
    exclude_extensions = [".log"];
    exclude_size_threshold = 10;
    alias_paths = ( ["data/sub", "alias"] );
}
runtime_configuration { max_active_game_instances = 3; crash_reporter_name = "Reporter"; }
"""
INCLUDE_CONFIG = """config_info { version = 2; }
search_options { include_paths = ["bin", "data/*.txt", "data/big.pak"]; }
runtime_configuration { max_active_game_instances = 3; crash_reporter_name = "Reporter"; }
"""
# The settings in both runtime configurations.
RUNTIME_SETTINGS = (3, b"Reporter")
# The game as it was when the existing signed files were made.
OLD_CONFIG = """config_info { version = 2; }
search_options { include_paths = ["bin/a.dat"]; }
"""
SIGNED_CONFIG = """config_info { version = 2; }
search_options { exclude_paths = ["Quorvane", "mods"]; exclude_size_threshold = 10; }
"""

# A configuration without warnings.
RULES_CONFIG = """config_info { version = 2; }
search_options { exclude_paths = ["Quorvane", "temp*"]; exclude_extensions = [".log"]; exclude_size_threshold = 10; }
"""

# Two patterns that lead to one file by a link, and names that differ in an accented capital alone.
WARNED_CONFIG = """config_info { version = 2; }
search_options { include_paths = ["bin", "linked"]; }
"""

FILES: Mapping[str, bytes] = {
    "bin/a.dat": b"hello",
    "bin/b.exe": bytes(range(256)) * 40,
    "bin/empty.dat": b"",
    "data/notes.txt": b"Notes.\n" * 300,
    "data/private.txt": b"not for players",
    "data/run.log": b"a log\n",
    "data/sub/deep.txt": b"deep down",
    "data/\u00fcn\u00ef.txt": "nothing but \u00fcml\u00e4uts".encode(),
    "temp/one.tmp": b"1",
    "temp2/two.tmp": b"2",
    "mods/pack.pak": b"packed" * 1000,
}


@dataclass(frozen=True)
class Credentials:
    """The folders with keys and certificates."""

    good: Path
    # For the same product, with another key.
    other_key: Path
    other_product: Path
    revocation_list: Path


@dataclass(frozen=True)
class Scene:
    """One action on one game, run in the scene's own folder."""

    name: str
    kind: str
    arguments: Sequence[str]
    # With threads, system call faults count the calls of one thread only.
    has_threads: bool = False
    # The signed files before the run, by name.
    before: Mapping[str, bytes] = field(default_factory=dict)
    # The signed files that a generate run writes.
    written: Sequence[str] = ()

    @property
    def program(self) -> str:
        """Which of the two programs the scene runs."""
        return COMPANION if self.kind == INSPECT else PROGRAM

    def arguments_in(self, folder: Path) -> List[str]:
        """The command line, without the program, for a copy of the scene."""
        return [argument.replace(FOLDER, str(folder)) for argument in self.arguments]


class SceneMaker:
    """Makes all scenes in a folder, each in a folder of its own."""

    def __init__(self, folder: Path, program: Path, credentials: Credentials) -> None:
        self.folder = folder
        self._program = program
        self._credentials = credentials

    def make_all(self) -> List[Scene]:
        """The scenes of the program's sweep, in the order of their runs."""
        return self._generate_scenes() + self._verify_scenes() + self._list_scenes()

    def make_all_of_companion(self) -> List[Scene]:
        """The scenes of the companion's sweep, in the order of their runs."""
        good = self._credentials.good
        signed = f"game/{OUTPUT_FOLDER}"
        options = ["--product", PRODUCT]
        credentials = ["--cert", str(good / "base_public.cer"), "--key", "own.key"]
        arguments = {
            "rules": ["--files", "--game", "game", "rules.cfg"],
            "check": [*options, "--strict", "--format", "junit", "game"],
            "credentials": [*options, *credentials, "--crl", str(self._credentials.revocation_list), "--json"],
            "show": [*options, "--json", "--digests", f"{signed}/base.bin"],
            "compare": [f"{signed}/base.bin", f"{signed}/mod1.bin"],
        }
        scenes = [self._inspect(name, [name, *given]) for name, given in arguments.items()]
        return [*scenes, self._warned_rules()]

    # Generate

    def _generate_scenes(self) -> List[Scene]:
        revocation_list = ["-incrl", str(self._credentials.revocation_list)]
        single_file = ["-target_file", "game/mods/pack.pak"]
        return [
            self._generate("generate-exclude", EXCLUDE_CONFIG, revocation_list),
            self._generate("generate-include", INCLUDE_CONFIG, has_outputs=False),
            self._generate("generate-single-file", None, single_file, written=OUTPUTS[:2]),
            self._generate("generate-exclude-jobs", EXCLUDE_CONFIG, ["-jobs", "2"], has_threads=True),
        ]

    def _generate(
        self,
        name: str,
        config: Optional[str],
        options: Sequence[str] = (),
        *,
        has_outputs: bool = True,
        has_threads: bool = False,
        written: Sequence[str] = OUTPUTS,
    ) -> Scene:
        folder = self._game_folder(name)
        before: Dict[str, bytes] = {}
        if has_outputs:
            (folder / "old.cfg").write_text(OLD_CONFIG)
            self._run(folder, [*generate_arguments(self._credentials.other_key), "old.cfg"])
            before = read_outputs(folder)
        if config is not None:
            (folder / "game.cfg").write_text(config)
        arguments = [*generate_arguments(self._credentials.good), *options]
        if config is not None:
            arguments.append("game.cfg")
        return Scene(name, GENERATE, arguments, has_threads, before, written)

    # Verify and list

    def _verify_scenes(self) -> List[Scene]:
        damages: Dict[str, Callable[[Path], None]] = {
            "verify-good": lambda game: None,
            "verify-first-chunk": lambda game: flip(game / BIG_FILE, 100),
            "verify-second-chunk": lambda game: flip(game / BIG_FILE, CHUNK_BYTES + 100),
            "verify-missing-file": lambda game: (game / "bin/a.dat").unlink(),
            "verify-longer-file-of-mod": lambda game: append(game / "mods/pack.pak", b"x"),
            "verify-catalogue": lambda game: flip(game / OUTPUT_FOLDER / "mod1.bin", -1),
            "verify-certificate": self._put_foreign_certificate,
            "verify-runtime-conf": lambda game: flip(game / OUTPUT_FOLDER / "runtime.conf", 1050),
        }
        scenes = []
        for name, damage in damages.items():
            folder = self._signed_folder(name)
            damage(folder / "game")
            arguments = ["-productid", PRODUCT, "verify", "game"]
            scenes.append(Scene(name, VERIFY, arguments, before=read_outputs(folder)))
        before = read_outputs(self._signed_folder("verify-good-jobs"))
        arguments = ["-productid", PRODUCT, "-jobs", "2", "verify", "game"]
        return [*scenes, Scene("verify-good-jobs", VERIFY, arguments, True, before)]

    def _list_scenes(self) -> List[Scene]:
        scenes = []
        for name, listed in (("list-catalogue", "base.bin"), ("list-runtime-conf", "runtime.conf")):
            before = read_outputs(self._signed_folder(name))
            scenes.append(Scene(name, LIST, ["list", f"game/{OUTPUT_FOLDER}/{listed}"], before=before))
        return scenes

    def _put_foreign_certificate(self, game: Path) -> None:
        shutil.copyfile(self._credentials.other_product / "base_public.cer", game / OUTPUT_FOLDER / "base.cer")

    def _inspect(self, name: str, arguments: Sequence[str]) -> Scene:
        folder = self._signed_folder(name)
        (folder / "rules.cfg").write_text(RULES_CONFIG)
        shutil.copyfile(self._credentials.good / "base_private.key", folder / "own.key")
        (folder / "own.key").chmod(0o600)
        # The only file that no catalogue lists, and that the size rule would warn about.
        (folder / "game" / SKIPPED_FILE).unlink()
        return Scene(name, INSPECT, arguments, before=read_outputs(folder))

    # Its warnings depend on what the system says of links and letters, and not on the rules alone.
    def _warned_rules(self) -> Scene:
        scene = self._inspect("rules-warned", ["rules", "--files", "--game", "game", "rules.cfg"])
        folder = self.folder / scene.name
        (folder / "rules.cfg").write_text(WARNED_CONFIG)
        for name in ("\u00c9cole", "\u00e9cole"):
            (folder / "game/bin" / name).write_bytes(b"a school")
        (folder / "game/linked").symlink_to("bin")
        return scene

    # A signed game: its own catalogue and one of a packed mod.
    def _signed_folder(self, name: str) -> Path:
        folder = self._game_folder(name)
        (folder / "signed.cfg").write_text(SIGNED_CONFIG)
        good = self._credentials.good
        self._run(folder, [*generate_arguments(good), "signed.cfg"])
        mod = ["-outname", "mod1", "-target_file", "mods/pack.pak"]
        self._run(folder / "game", [*generate_arguments(good, target="."), *mod])
        for made in ("mod1.bin", "mod1.cer"):
            shutil.move(folder / "game" / made, folder / "game" / OUTPUT_FOLDER / made)
        return folder

    def _game_folder(self, name: str) -> Path:
        folder = self.folder / name
        write_game(folder / "game")
        return folder

    def _run(self, folder: Path, arguments: Sequence[str]) -> None:
        command = [str(self._program), *(argument.replace(FOLDER, str(folder)) for argument in arguments)]
        run = subprocess.run(command, cwd=folder, capture_output=True, check=False)
        if run.returncode != 0:
            raise RuntimeError(f"{folder.name} cannot be made: {run.stdout.decode(errors='replace')}")


def generate_arguments(credentials: Path, target: str = f"{FOLDER}/game") -> List[str]:
    """The options that every generate run has."""
    arguments = ["-productid", PRODUCT, "-inkey", str(credentials / "base_private.key")]
    return arguments + ["-incert", str(credentials / "base_public.cer"), "-target_game_dir", target]


def write_game(game: Path) -> None:
    """Write the files of the game."""
    for name, content in FILES.items():
        path = game / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
    (game / BIG_FILE).write_bytes(random.Random(1).randbytes(BIG_BYTES))
    (game / SKIPPED_FILE).touch()
    os.truncate(game / SKIPPED_FILE, SKIPPED_BYTES)


def flip(path: Path, offset: int) -> None:
    """Flip one bit of a file."""
    content = bytearray(path.read_bytes())
    content[offset] ^= 1
    path.write_bytes(content)


def append(path: Path, content: bytes) -> None:
    """Write to the end of a file."""
    with path.open("ab") as file:
        file.write(content)


def read_outputs(folder: Path) -> Dict[str, bytes]:
    """All files in the folder of signed files by name, including any others there."""
    outputs = folder / "game" / OUTPUT_FOLDER
    if not outputs.is_dir():
        return {}
    return {path.name: path.read_bytes() for path in outputs.iterdir()}


def restore_outputs(folder: Path, before: Mapping[str, bytes]) -> None:
    """Restore the signed files from before the run, which may be none."""
    found = read_outputs(folder)
    if found == before:
        return
    outputs = folder / "game" / OUTPUT_FOLDER
    shutil.rmtree(outputs.parent)
    if before:
        outputs.mkdir(parents=True)
        for name, content in before.items():
            (outputs / name).write_bytes(content)
