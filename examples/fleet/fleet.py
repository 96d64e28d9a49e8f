#!/usr/bin/env python3
"""Counts a folder of recordings of one receiver on Dask, as one recording.

usage: fleet.py [options] FOLDER

Each worker reduces one recording after the other to a state; states are merged in a tree, on the workers too. A worker that
dies costs what it held: Dask computes that again elsewhere. Needs Debian's python3-distributed.
"""
from __future__ import annotations

import argparse
import pathlib
import sys
from typing import Any, Callable, Iterable, Optional, Tuple

from distributed import Client, Future, LocalCluster, as_completed

import rfutils

#: how many states become one in each step
BRANCHES = 16


def reduce_recording(path: str, of: str, channels: Tuple[Any, ...], options: dict[str, Any]) -> rfutils.State:
    """The work on a recording."""
    return rfutils.Recording(path).state(of, *channels, **options)


def first_time(state: rfutils.State) -> Any:
    return state.first_time


def merge(states: list[rfutils.State]) -> rfutils.State:
    return rfutils.State.merged(states)


def reduce_fleet(client: Client, paths: Iterable[str], of: str = "peaks", *channels: Tuple[float, float],
                 on_progress: Callable[[int, int], None] = lambda done, all: None,
                 on_failure: Optional[Callable[[BaseException], None]] = None, **options: Any) -> rfutils.State:
    """The state of all recordings together.

    `of`, the channels and the options are those of Recording.state(). Without on_failure a recording that cannot be read
    is an error; with it the others are merged. A result is the same whatever the workers do.
    """
    futures = [client.submit(reduce_recording, path, of, channels, options, pure=False) for path in paths]
    for done, future in enumerate(as_completed(futures), 1):
        if future.status == "error":
            if on_failure is None:
                raise future.exception()
            on_failure(future.exception())
        on_progress(done, len(futures))
    states = [future for future in futures if future.status != "error"]
    if not states:
        raise ValueError("no recording could be read")
    # Only neighbours in time merge.
    times = client.gather(client.map(first_time, states, pure=False))
    ordered = [states[place] for place in sorted(range(len(states)), key=times.__getitem__)]
    while len(ordered) > 1:
        ordered = [merged(client, ordered[begin:begin + BRANCHES]) for begin in range(0, len(ordered), BRANCHES)]
    return ordered[0].result()


def merged(client: Client, states: list[Future]) -> Future:
    return states[0] if len(states) == 1 else client.submit(merge, states, pure=False)


def local_cluster(workers: Optional[int]) -> LocalCluster:
    """Processes on this machine, which talk to each other on loopback only."""
    return LocalCluster(n_workers=workers, threads_per_worker=1, host="127.0.0.1", dashboard_address=None)


def show_progress(done: int, all: int) -> None:
    print(f"\r{done} of {all} recordings", end="" if done < all else "\n", file=sys.stderr, flush=True)


def main() -> int:
    parser = argparse.ArgumentParser(description="Counts a folder of recordings of one receiver on Dask, as one recording.")
    parser.add_argument("folder", metavar="FOLDER", type=pathlib.Path)
    parser.add_argument("--cluster", metavar="ADDRESS", help="a scheduler, such as tcp://10.0.0.5:8786; a local cluster unless given")
    parser.add_argument("--workers", metavar="N", type=int, help="of the local cluster; as many as processors unless given")
    parser.add_argument("--pattern", default="*.csv*", help="of the names, *.csv* unless given")
    parser.add_argument("--state", metavar="OUT", help="also write the state, with which rfutils merge goes on")
    parser.add_argument("--quiet", action="store_true", help="show no progress")
    arguments = parser.parse_args()
    paths = sorted(str(path.absolute()) for path in arguments.folder.glob(arguments.pattern))
    if not paths:
        parser.error(f"{arguments.folder} has no {arguments.pattern}")
    failures: list[BaseException] = []
    cluster = arguments.cluster or local_cluster(arguments.workers)
    try:
        with Client(cluster) as client:
            state = reduce_fleet(client, paths, on_progress=(lambda done, all: None) if arguments.quiet else show_progress,
                                 on_failure=failures.append)
    finally:
        if not arguments.cluster:
            cluster.close()
    for failure in failures:
        print(f"fleet.py: {failure}", file=sys.stderr)
    if arguments.state:
        state.save(arguments.state)
    peaks = state.peaks()
    print(",".join(peaks.dtype.names))
    for peak in peaks:
        print(",".join(str(part) for part in peak))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
