"""Tries a list of changes, on several copies of the tree at once."""
import queue
import signal
import subprocess
import sys
import threading
from pathlib import Path

from places import Mutation
from programs import Interrupted
from workbench import Outcome, Workbench


class Trial:
    """Hands the changes out to the workbenches, in their order, and keeps what became of each."""

    def __init__(self, root: Path, mutations: list[Mutation], workers: int):
        self.total = len(mutations)
        self.outcomes: dict[Mutation, Outcome] = {}
        self.errors: list[Exception] = []
        self.interrupted = False
        self.waiting: queue.SimpleQueue[Mutation] = queue.SimpleQueue()
        for mutation in mutations:
            self.waiting.put(mutation)
        place = root / "build" / "mutate"
        self.benches = [Workbench(root, place / str(number)) for number in range(1, workers + 1)]

    def execute(self) -> bool:
        """Whether all have been tried, not interrupted; throws what went wrong on a workbench."""
        threads = [threading.Thread(target=self.work, args=(bench,)) for bench in self.benches]
        # An exception that a signal throws would leave the threads alone in the middle of a change.
        for number in (signal.SIGINT, signal.SIGTERM):
            signal.signal(number, lambda *_: self.interrupt())
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if self.errors:
            raise self.errors[0]
        return not self.interrupted

    def interrupt(self) -> None:
        """Ends the work on all workbenches."""
        self.interrupted = True
        for bench in self.benches:
            bench.interrupt()

    def work(self, bench: Workbench) -> None:
        """What the thread of one workbench does: one mutation after the other."""
        try:
            bench.prepare()
            while True:
                mutation = self.waiting.get_nowait()
                self.note(mutation, bench.judge(mutation))
        except (queue.Empty, Interrupted):
            pass
        except (OSError, RuntimeError, subprocess.SubprocessError) as error:
            self.errors.append(error)  # thrown by the main thread when the others have ended, too
            self.interrupt()
        finally:
            bench.restore()

    def note(self, mutation: Mutation, outcome: Outcome) -> None:
        """Keeps an outcome; shows a person who waits what nobody notices, and how far it is."""
        self.outcomes[mutation] = outcome
        if outcome is Outcome.SURVIVED:
            print(f"\rnot noticed: {mutation}", file=sys.stderr)
        print(f"\r{len(self.outcomes)} of {self.total} tried", end="", file=sys.stderr, flush=True)
