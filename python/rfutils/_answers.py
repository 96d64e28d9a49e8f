"""What studies of recordings and of states found, as tables."""
from __future__ import annotations

from typing import List, NamedTuple, Optional, Sequence, Tuple

import numpy as np
import numpy.typing as npt

from . import _core
from ._errors import note
from ._tables import Table, in_unit, table

POINT_COLUMNS = ("point", "frequency_hz", "count", "average", "maximum", "minimum")
MORE_COLUMNS = ("power_mean", "median", "deviation_db", "maximum_sweep", "maximum_time")
PEAK_COLUMNS = ("frequency_hz", "width_hz", "maximum", "average", "floor", "above", "present", "first", "last")
CHANNEL_COLUMNS = ("from_hz", "to_hz", "samples", "occupied", "occupancy", "low", "high")
BAND_COLUMNS = ("from_hz", "to_hz", "channels", "samples", "fbo", "sro", "threshold")
POWER_COLUMNS = ("from_hz", "to_hz", "power", "occupied_from_hz", "occupied_to_hz")

#: frequencies in Hz, then numbers of points
Marks = Tuple[List[float], List[int]]


class Occupancy(NamedTuple):
    """How busy channels are: a table with a row for each channel, and one on the band that they span."""

    channels: Table
    band: Table


def points_of(study: _core.Points, has_limit: bool, more: bool, unit: str, center_hz: Optional[float], gain: float,
              marks: Optional[Marks] = None) -> Table:
    columns = study.rows()
    axis = study.axis().frequencies_hz()
    own = axis[columns["point"]] if len(axis) else None
    columns["frequency_hz"] = np.full(len(columns["point"]), np.nan) if own is None else own
    levels = ["average", "maximum", "minimum"] + (["power_mean", "median"] if more else [])
    in_unit(columns, levels, unit, center_hz, own, gain)
    names = POINT_COLUMNS + (("above",) if has_limit else ()) + (MORE_COLUMNS if more else ())
    if marks is not None:
        columns["marker_hz"] = np.array(marks[0] + [np.nan] * len(marks[1]))
        names = ("marker_hz",) + names
    return table(columns, names)


def marks_of(frequencies_hz: npt.ArrayLike, points: npt.ArrayLike) -> Marks:
    """Markers as they are asked for."""
    frequencies = np.atleast_1d(np.asarray(frequencies_hz, dtype=np.float64))
    numbers = np.atleast_1d(np.asarray(points))
    if frequencies.ndim != 1 or not np.isfinite(frequencies).all():
        raise ValueError("the frequency of a marker is a number of Hz")
    if numbers.ndim != 1 or numbers.size and (numbers.dtype.kind not in "iu" or numbers.min() < 0
                                              or numbers.max() > np.iinfo(np.int32).max):
        raise ValueError("points are whole numbers, counted from 0")
    if not frequencies.size and not numbers.size:
        raise ValueError("markers are one frequency or point at least")
    return frequencies.tolist(), numbers.tolist()


def peaks_of(study: _core.Signals, above_db: Optional[float], width_at_db: float, window: int,
             spurs: Sequence[Tuple[Optional[float], float]], unit: str, center_hz: Optional[float], gain: float) -> Table:
    columns = study.find(above_db, width_at_db, window, list(spurs))
    own = study.axis().frequencies_hz()[columns["point"]]
    in_unit(columns, ["maximum", "average", "floor"], unit, center_hz, own, gain)
    return table(columns, PEAK_COLUMNS)


def occupancy_of(study: _core.Occupancies, by_hour: bool, unit: str, center_hz: Optional[float], gain: float) -> Occupancy:
    note(study.remarks())
    if study.parts() > 1:
        note([f"the floor is that of each of {study.parts()} parts of the recording"])
    channels, band = study.channels(), study.band()
    in_unit(band, ["threshold"], unit, center_hz, (band["from_hz"] + band["to_hz"]) / 2.0, gain)
    hour = ("hour",) if by_hour else ()
    return Occupancy(table(channels, hour + CHANNEL_COLUMNS), table(band, hour + BAND_COLUMNS))


def power_of(study: _core.Powers, series: bool, has_neighbours: bool, unit: str, center_hz: Optional[float],
             gain: float) -> Table:
    note(study.remarks())
    columns = study.rows()
    in_unit(columns, ["power"], unit, center_hz, (columns["from_hz"] + columns["to_hz"]) / 2.0, gain)
    names = (("sweep", "time") if series else ()) + POWER_COLUMNS + (("relative_db",) if has_neighbours else ())
    return table(columns, names)
