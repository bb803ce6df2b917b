"""Measures how many small mistakes the unit tests notice.

Makes one small change after the other in the files of src/commands, src/projector and src/lens,
each in a copy of the tree, builds the copy and runs its unit tests. A change is noticed when a test
fails or does not end; one that does not compile does not count. Prints the share of the changes
that are noticed, and those that no test notices. Ends with status 1 where the share is below the
one demanded, with 2 where it cannot be measured.
"""
import argparse
import fcntl
import json
import os
import random
import sys
from collections import Counter
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from typing import Iterator

from places import Mutation, mutations_of
from trial import Trial
from workbench import FOLDERS, Outcome

ROOT = Path(__file__).resolve().parents[2]
DEMANDED_PERCENT = 90.0


@dataclass(frozen=True)
class Share:
    """How many of the changes that compile are noticed."""
    noticed: int
    counted: int

    @staticmethod
    def among(outcomes: list[Outcome]) -> "Share":
        """The share in a list of outcomes."""
        count = Counter(outcomes)
        noticed = count[Outcome.FAILED] + count[Outcome.HUNG]
        return Share(noticed, noticed + count[Outcome.SURVIVED])

    def percent(self) -> float:
        """Nothing to notice is nothing missed."""
        return 100 * self.noticed / self.counted if self.counted else 100.0

    def __str__(self) -> str:
        return f"{self.noticed} of {self.counted} changes noticed, {self.percent():.1f} %"


def parse_options() -> argparse.Namespace:
    """What the user asks for."""
    parser = argparse.ArgumentParser(prog="scripts/mutate", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", action="append", metavar="FILE",
                        help="change this file alone, such as src/lens/LensControl.cpp; "
                             "may be given several times")
    parser.add_argument("--sample", type=int, metavar="N", help="try N changes chosen at random")
    parser.add_argument("--seed", type=int, default=1, metavar="S",
                        help="chooses another sample (default: 1)")
    parser.add_argument("--workers", type=int, default=len(os.sched_getaffinity(0)), metavar="N",
                        help="changes tried at a time (default: the number of processors)")
    parser.add_argument("--json", action="store_true", help="print every change and its outcome")
    return parser.parse_args()


def files_to_change(only: list[str] | None) -> list[str]:
    """The files that the user names, or all of the folders, in a fixed order."""
    files = [str(path.relative_to(ROOT)) for folder in FOLDERS
             for path in sorted((ROOT / "src" / folder).iterdir())]
    if only is None:
        return files
    unknown = [file for file in only if file not in files]
    if unknown:
        raise RuntimeError(f"not a file of {', '.join(FOLDERS)}: {', '.join(unknown)}")
    return [file for file in files if file in only]


def chosen_mutations(options: argparse.Namespace) -> list[Mutation]:
    """The changes to try, in the order of folder, file and line."""
    mutations = [mutation for file in files_to_change(options.only)
                 for mutation in mutations_of(ROOT, file)]
    if options.sample is None or options.sample >= len(mutations):
        return mutations
    picked = random.Random(options.seed).sample(range(len(mutations)), options.sample)
    return [mutations[number] for number in sorted(picked)]


def report(outcomes: dict[Mutation, Outcome]) -> None:
    """The survivors, then the shares, for a person."""
    for mutation, outcome in outcomes.items():
        if outcome is Outcome.SURVIVED:
            print(mutation)
    for folder in FOLDERS:
        inside = [outcome for mutation, outcome in outcomes.items()
                  if mutation.file.startswith(f"src/{folder}/")]
        if inside:
            print(f"{folder + ':':<11}{Share.among(inside)}")
    count = Counter(outcomes.values())
    print(f"{'in all:':<11}{Share.among(list(outcomes.values()))} "
          f"({count[Outcome.HUNG]} by a test that does not end; "
          f"{count[Outcome.NOT_COMPILED]} more do not compile)")


def report_json(outcomes: dict[Mutation, Outcome]) -> None:
    """Every change with its outcome, for a program."""
    rows = [{"file": mutation.file, "line": mutation.line, "change": mutation.change,
             "outcome": outcome.value} for mutation, outcome in outcomes.items()]
    json.dump(rows, sys.stdout, indent=1)
    print()


@contextmanager
def alone() -> Iterator[None]:
    """Lets no second run have the copies of the tree; the lock ends with the process."""
    place = ROOT / "build" / "mutate"
    place.mkdir(parents=True, exist_ok=True)
    with (place / "lock").open("w") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError as taken:
            raise RuntimeError("another run is under way") from taken
        yield


def main() -> int:
    """Runs what the user asks for; the exit status."""
    options = parse_options()
    mutations = chosen_mutations(options)
    trial = Trial(ROOT, mutations, max(1, options.workers))
    with alone():
        completed = trial.execute()
    # Interrupted, too, it tells what it has found. Several workers do not finish in order.
    outcomes = {mutation: trial.outcomes[mutation] for mutation in mutations
                if mutation in trial.outcomes}
    (report_json if options.json else report)(outcomes)
    if not completed:
        return 130
    return 0 if Share.among(list(outcomes.values())).percent() >= DEMANDED_PERCENT else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
    except RuntimeError as error:
        print(f"mutate: {error}", file=sys.stderr)
        sys.exit(2)
