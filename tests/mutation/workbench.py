"""A copy of the tree with a light build of its own, in which one change after the other is tried.

The copy stays from run to run, so that only the first run builds everything. It is made equal to
the tree again before each run, whatever an interrupted one has left in it.
"""
import shutil
import subprocess
import time
from enum import Enum
from pathlib import Path

from places import Mutation
from programs import Programs

FOLDERS = ("commands", "projector", "lens")
LOOKED_AT_FIRST = {"commands": FOLDERS,
                   "projector": ("projector", "lens", "commands"),
                   "lens": ("lens", "projector", "commands")}
CONFIGURATION = ["-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O0 -w",
                 "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld", "-DORX_BUILD_TOOLS=OFF",
                 # The tests are not run by ctest: they need not be listed after every link.
                 "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]
TEST_OPTIONS = ["--gtest_fail_fast", "--gtest_brief=1", "--gtest_color=no"]
FIRST_BUILD_LIMIT_S = 7200.0
BUILD_LIMIT_S = 600.0
FIRST_RUN_LIMIT_S = 300.0


class Outcome(Enum):
    """What became of a change."""
    NOT_COMPILED = "does not compile"
    FAILED = "a test fails"
    HUNG = "a test does not end"
    SURVIVED = "no test notices"


class Workbench:
    """One copy of the tree. Used by one thread; only `interrupt` may be called by another."""

    def __init__(self, root: Path, place: Path):
        self.root = root
        self.tree = place / "tree"
        self.build = place / "build"
        self.programs = Programs(place)
        self.limits: dict[str, float] = {}
        self.changed: str | None = None
        self.original = b""

    def prepare(self) -> None:
        """Brings the copy up to date and builds it; throws where a test fails without a change."""
        self.copy_tree()
        if not (self.build / "build.ninja").exists():
            self.require(["cmake", "-G", "Ninja", "-S", str(self.tree), "-B", str(self.build),
                          *CONFIGURATION], "the copy cannot be configured")
        targets = [f"unit_{folder}" for folder in FOLDERS]
        self.require(["ninja", "-C", str(self.build), "-j1", *targets], "the copy does not build")
        for folder in FOLDERS:
            begin = time.monotonic()
            if self.test(folder, FIRST_RUN_LIMIT_S) != Outcome.SURVIVED:
                raise RuntimeError(f"the tests of {folder} fail without any change")
            # What hangs counts as noticed, so a machine that is busy must not look like a hang.
            self.limits[folder] = 10 + 5 * (time.monotonic() - begin)

    def judge(self, mutation: Mutation) -> Outcome:
        """Makes the change and runs the tests of its folder, then those of the other folders."""
        if self.changed != mutation.file:
            self.restore()
            self.original = (self.tree / mutation.file).read_bytes()
            self.changed = mutation.file
        (self.tree / mutation.file).write_bytes(mutation.apply(self.original))
        for folder in LOOKED_AT_FIRST[Path(mutation.file).parts[1]]:
            if not self.compiles(folder):
                return Outcome.NOT_COMPILED
            outcome = self.test(folder, self.limits[folder])
            if outcome != Outcome.SURVIVED:
                return outcome
        return Outcome.SURVIVED

    def restore(self) -> None:
        """Takes the last change back."""
        if self.changed is not None:
            (self.tree / self.changed).write_bytes(self.original)
            self.changed = None

    def interrupt(self) -> None:
        """Ends what runs, and lets nothing else begin."""
        self.programs.interrupt()

    def copy_tree(self) -> None:
        """Makes the copy equal to the tree; a file that is equal keeps its time, and its object."""
        listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others",
                                 "--exclude-standard"], cwd=self.root, check=True,
                                capture_output=True).stdout
        files = {Path(name) for name in listed.decode().split("\0")
                 if (self.root / name).is_file()}
        for file in files:
            copy_if_different(self.root / file, self.tree / file)
        for path in self.tree.rglob("*"):
            if path.is_file() and path.relative_to(self.tree) not in files:
                path.unlink()

    def compiles(self, folder: str) -> bool:
        """Builds the tests of one folder."""
        command = ["ninja", "-C", str(self.build), "-j1", f"unit_{folder}"]
        return self.programs.run(command, BUILD_LIMIT_S) == 0

    def test(self, folder: str, limit_s: float) -> Outcome:
        """Runs the tests of one folder up to the first that fails."""
        program = str(self.build / "tests" / f"unit_{folder}")
        status = self.programs.run([program, *TEST_OPTIONS], limit_s)
        if status is None:
            return Outcome.HUNG
        return Outcome.SURVIVED if status == 0 else Outcome.FAILED

    def require(self, command: list[str], complaint: str) -> None:
        """Runs a program that must succeed."""
        if self.programs.run(command, FIRST_BUILD_LIMIT_S) != 0:
            raise RuntimeError(f"{complaint}:\n{self.programs.output()}")


def copy_if_different(source: Path, destination: Path) -> None:
    """Copies a file unless the copy is there already."""
    if destination.is_file() and destination.read_bytes() == source.read_bytes():
        return
    destination.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(source, destination)
