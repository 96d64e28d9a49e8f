"""States of statistics, which merge."""
from __future__ import annotations

import contextlib
import os
import tempfile
from typing import Any, Iterable, Iterator, List, Optional, Sequence, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _core
from ._answers import Occupancy, marks_of, occupancy_of, peaks_of, points_of, power_of
from ._errors import InputError
from ._tables import Table

Path = Union[str, "os.PathLike[str]"]

#: the command that writes a state, and its study
_STUDIES = {"trace": "points", "peaks": "peaks", "occupancy": "occupancy", "power": "power"}


class State:
    """What is known of a recording, to go on from: the bytes that the command writes with `--state`.

    >>> from rfutils import Recording
    >>> state = Recording("fm_band.csv").state("points")
    >>> state.of, state.sweeps, state.points()["maximum"].max()
    ('points', 240, -37.68)

    States are equal where their bytes are. They pickle, and any engine may merge them in a tree: see docs/fleet.md.
    """

    def __init__(self, data: bytes, *, name: str = "state") -> None:
        """Of the bytes of a state, `name` being what errors call it."""
        self._data = bytes(data)
        self.name = name
        with _files([self]) as files:
            self._head = _core.state_head(files[0])

    @classmethod
    def load(cls, path: Path) -> State:
        """Reads a state that the command or save() wrote."""
        with open(path, "rb") as file:
            return cls(file.read(), name=os.fsdecode(path))

    def save(self, path: Path) -> None:
        """Writes the state, as `--state` does. It replaces an older file once it is complete."""
        part = f"{os.fsdecode(path)}.part{os.getpid()}"
        try:
            with open(part, "wb") as file:
                file.write(self._data)
            os.replace(part, path)
        except BaseException:
            with contextlib.suppress(OSError):
                os.unlink(part)
            raise

    @classmethod
    def merged(cls, states: Iterable[State]) -> State:
        """The state of all of them, `rfutils merge --state`. They are put in the order of their times."""
        parts = list(states)
        if not parts:
            raise ValueError("there is no state to merge")
        with _files(parts) as files:
            return cls(_study(parts[0], files).state(), name=parts[0].name)

    def __bytes__(self) -> bytes:
        return self._data

    def __reduce__(self) -> Any:
        return _state_of, (self._data, self.name)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, State) and self._data == other._data

    def __hash__(self) -> int:
        return hash(self._data)

    def __repr__(self) -> str:
        return f"<rfutils.State of {self.of}, {self.sweeps} sweeps>"

    @property
    def of(self) -> str:
        """ "points", "peaks", "occupancy" or "power"."""
        return _STUDIES.get(self._head["command"], self._head["command"])

    @property
    def sweeps(self) -> int:
        """How many there are."""
        return int(self._head["sweeps"])

    @property
    def first_time(self) -> np.datetime64:
        """When the first sweep began."""
        return np.datetime64(self._head["first_time"], "us")

    @property
    def last_time(self) -> np.datetime64:
        """When the last sweep began."""
        return np.datetime64(self._head["last_time"], "us")

    @property
    def settings(self) -> List[Tuple[str, str]]:
        """The options of the command that decide what was counted."""
        return list(self._head["settings"])

    def _read(self, of: str) -> Any:
        if self.of != of:
            raise ValueError(f"this is a state of {self.of}, not of {of}")
        with _files([self]) as files:
            return _study(self, files)

    def points(self, *, unit: str = "dBm", center_hz: Optional[float] = None, gain: float = 0.0) -> Table:
        """See Recording.points()."""
        return points_of(self._read("points"), self._has_limit(), False, unit, center_hz, gain)

    def markers(self, frequencies_hz: npt.ArrayLike = (), *, points: npt.ArrayLike = (), unit: str = "dBm",
                center_hz: Optional[float] = None, gain: float = 0.0) -> Table:
        """See Recording.markers(); of a state of points, `rfutils merge --marker`.

        >>> from rfutils import Recording
        >>> Recording("fm_band.csv").state("points").markers(98.3e6)["maximum"].item()
        -37.68
        """
        marks = marks_of(frequencies_hz, points)
        study = self._read("points")
        study.mark(marks, os.fsencode(self.name))
        return points_of(study, self._has_limit(), False, unit, center_hz, gain, marks)

    def _has_limit(self) -> bool:
        return any(name == "limit" for name, _ in self.settings)

    def peaks(self, *, above_db: Optional[float] = None, width_at_db: float = 6.0, window: int = 101,
              spurs: Sequence[Tuple[Optional[float], float]] = (), unit: str = "dBm", center_hz: Optional[float] = None,
              gain: float = 0.0) -> Table:
        """See Recording.peaks(). States hold no single levels; average and floor are within 0.05 dB."""
        return peaks_of(self._read("peaks"), above_db, width_at_db, window, spurs, unit, center_hz, gain)

    def occupancy(self, *, unit: str = "dBm", center_hz: Optional[float] = None, gain: float = 0.0) -> Occupancy:
        """See Recording.occupancy()."""
        return occupancy_of(self._read("occupancy"), ("by", "hour") in self.settings, unit, center_hz, gain)

    def power(self, *, unit: str = "dBm", center_hz: Optional[float] = None, gain: float = 0.0) -> Table:
        """See Recording.power(), with a row for each sweep and channel."""
        has_neighbours = any(name == "spacing" for name, _ in self.settings)
        return power_of(self._read("power"), True, has_neighbours, unit, center_hz, gain)


def _state_of(data: bytes, name: str) -> State:
    return State(data, name=name)


def _study(first: State, files: List[bytes]) -> Any:
    if first.of == "peaks":
        study = _core.Signals()
        study.merge(files)
        return study
    studies = {"points": _core.Points, "occupancy": _core.Occupancies, "power": _core.Powers}
    if first.of not in studies:
        raise ValueError(f"there is nothing that merges states of {first.of}")
    return studies[first.of](files)


@contextlib.contextmanager
def _files(states: Sequence[State]) -> Iterator[List[bytes]]:
    """The states as files while they are read. Errors name the states instead."""
    with tempfile.TemporaryDirectory(prefix="rfutils") as folder:
        names = {}
        for number, state in enumerate(states):
            file = os.path.join(folder, f"{number:06}")
            with open(file, "wb") as output:
                output.write(bytes(state))
            names[file] = state.name
        try:
            yield [os.fsencode(file) for file in names]
        except InputError as error:
            problem = error.problem
            for file, name in names.items():
                problem = problem.replace(file, name)
            raise InputError(names.get(error.file, error.file), error.line, problem) from None
