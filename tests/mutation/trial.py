"""Tries a list of changes, on several copies of the tree at once."""
import queue
import sys
import threading
from pathlib import Path

from places import Mutation
from workbench import Interrupted, Outcome, Workbench


class Trial:
    """Hands the changes out to the workbenches, in their order, and keeps what became of each."""

    def __init__(self, root: Path, mutations: list[Mutation], workers: int):
        self.total = len(mutations)
        self.outcomes: dict[Mutation, Outcome] = {}
        self.errors: list[Exception] = []
        self.waiting: queue.SimpleQueue[Mutation] = queue.SimpleQueue()
        for mutation in mutations:
            self.waiting.put(mutation)
        place = root / "build" / "mutate"
        self.benches = [Workbench(root, place / str(number)) for number in range(1, workers + 1)]

    def execute(self) -> None:
        """Returns when all have been tried; throws what went wrong on a workbench."""
        threads = [threading.Thread(target=self.work, args=(bench,)) for bench in self.benches]
        for thread in threads:
            thread.start()
        try:
            for thread in threads:
                thread.join()
        except BaseException:
            self.interrupt()
            raise
        finally:
            for thread in threads:
                thread.join()
        if self.errors:
            raise self.errors[0]

    def interrupt(self) -> None:
        """Ends the work on all workbenches."""
        for bench in self.benches:
            bench.interrupt()

    def work(self, bench: Workbench) -> None:
        """What the thread of one workbench does: one mutation after the other."""
        try:
            bench.prepare()
            while True:
                mutation = self.waiting.get_nowait()
                self.outcomes[mutation] = bench.judge(mutation)
                self.show_progress()
        except (queue.Empty, Interrupted):
            pass
        except Exception as error:  # shown by the main thread; the other workers have to end, too
            self.errors.append(error)
            self.interrupt()
        finally:
            bench.restore()

    def show_progress(self) -> None:
        """One line that is written over and over, for a person who waits."""
        if sys.stderr.isatty() or len(self.outcomes) % 50 == 0:
            survivors = sum(outcome is Outcome.SURVIVED for outcome in self.outcomes.values())
            print(f"\r{len(self.outcomes)} of {self.total} tried, {survivors} not noticed",
                  end="" if sys.stderr.isatty() else "\n", file=sys.stderr, flush=True)
