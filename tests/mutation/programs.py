"""Runs the compiler and the tests, some of which have been made to run wild."""
import os
import resource
import shutil
import signal
import subprocess
from pathlib import Path

# A changed loop may be one without end that takes all the memory there is, or all of the disk.
MEMORY_LIMIT = 4 << 30
FILE_LIMIT = 1 << 30


class Interrupted(Exception):
    """The user wants an end."""


class Programs:
    """Runs one program after the other, for one thread; any thread may interrupt it."""

    def __init__(self, place: Path):
        self.temporary = place / "tmp"
        self.output_file = place / "output.txt"
        self.running: subprocess.Popen[bytes] | None = None
        self.interrupted = False

    def interrupt(self) -> None:
        """Ends what runs, and lets nothing else begin."""
        self.interrupted = True
        if self.running is not None:
            end_group(self.running)

    def output(self) -> str:
        """The end of what the last program wrote."""
        return self.output_file.read_text(errors="replace")[-4000:]

    def run(self, command: list[str], limit_s: float) -> int | None:
        """The exit status of a program, or nothing where it has to be ended after its time.

        Throws `Interrupted` where it was ended because of `interrupt`.
        """
        if self.interrupted:
            raise Interrupted
        shutil.rmtree(self.temporary, ignore_errors=True)
        self.temporary.mkdir(parents=True)
        # A group of its own: Ctrl-C reaches this program alone, which then ends the others.
        with self.output_file.open("wb") as output, subprocess.Popen(
                command, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                start_new_session=True,
                env=os.environ | {"TMPDIR": str(self.temporary)}) as process:
            self.running = process
            limit_resources(process)
            if self.interrupted:
                end_group(process)  # interrupted while it started
            try:
                status: int | None = process.wait(limit_s)
            except subprocess.TimeoutExpired:
                status = None
            end_group(process)
        if self.interrupted:
            raise Interrupted
        return status


def limit_resources(process: subprocess.Popen[bytes]) -> None:
    """Keeps a program that has gone wild from taking the machine with it."""
    try:
        resource.prlimit(process.pid, resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
        resource.prlimit(process.pid, resource.RLIMIT_FSIZE, (FILE_LIMIT, FILE_LIMIT))
        resource.prlimit(process.pid, resource.RLIMIT_CORE, (0, 0))
    except ProcessLookupError:
        pass  # it has ended already


def end_group(process: subprocess.Popen[bytes]) -> None:
    """Ends a program with all that it has started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()
