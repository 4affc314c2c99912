#!/usr/bin/python3
"""Usage: tools/cluster/dask_dataset.py [--scheduler ADDRESS | --workers N] PARTS FOLDER OPTION...

Makes a dataset in PARTS parts with Dask (Debian: python3-distributed): on the workers of a scheduler,
or on N new ones here. FOLDER and the options are those of `zelvatone dataset`, without --shard. All
workers see FOLDER under the same name and have `zelvatone` in their PATH; one thread for each worker
is enough, for `zelvatone` has its own. After a failure run the same again."""

import argparse
import subprocess
import sys

from distributed import Client, LocalCluster


def makePart(part, parts, words):
    """Runs on a worker. Returns the line that tells of a failure, or nothing."""
    command = ["zelvatone", "dataset", *words, "--quiet", "--shard", f"{part}/{parts}"]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    return "" if result.returncode == 0 else result.stderr.strip() or f"part {part} was ended"


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--scheduler", metavar="ADDRESS")
    parser.add_argument("--workers", type=int, default=1)
    parser.add_argument("parts", type=int)
    parser.add_argument("words", nargs=argparse.REMAINDER, metavar="FOLDER OPTION...")
    options = parser.parse_args()
    where = options.scheduler or LocalCluster(n_workers=options.workers, threads_per_worker=1,
                                              dashboard_address=None)
    with Client(where) as client:
        parts = range(1, options.parts + 1)
        # A worker that is lost loses its parts, which others then make.
        running = client.map(makePart, parts, parts=options.parts, words=options.words, pure=False)
        failures = [line for line in client.gather(running) if line]
    for line in failures:
        print(line, file=sys.stderr)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
