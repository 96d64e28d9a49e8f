"""What studies of recordings and of states found, as tables."""
from __future__ import annotations

from typing import NamedTuple, Optional, Sequence, Tuple

import numpy as np

from . import _core
from ._errors import note
from ._tables import Table, in_unit, table

POINT_COLUMNS = ("point", "frequency_hz", "count", "average", "maximum", "minimum")
MORE_COLUMNS = ("power_mean", "median", "deviation_db", "maximum_sweep", "maximum_time")
PEAK_COLUMNS = ("frequency_hz", "width_hz", "maximum", "average", "floor", "above", "present", "first", "last")
CHANNEL_COLUMNS = ("from_hz", "to_hz", "samples", "occupied", "occupancy", "low", "high")
BAND_COLUMNS = ("from_hz", "to_hz", "channels", "samples", "fbo", "sro", "threshold")
POWER_COLUMNS = ("from_hz", "to_hz", "power", "occupied_from_hz", "occupied_to_hz")


class Occupancy(NamedTuple):
    """How busy channels are: a table with a row for each channel, and one on the band that they span."""

    channels: Table
    band: Table


def points_of(study: _core.Points, has_limit: bool, more: bool, unit: str, center_hz: Optional[float], gain: float) -> Table:
    columns = study.rows()
    frequencies = study.axis().frequencies_hz()
    count = len(columns["count"])
    columns["point"] = np.arange(count)
    columns["frequency_hz"] = frequencies if len(frequencies) else np.full(count, np.nan)
    levels = ["average", "maximum", "minimum"] + (["power_mean", "median"] if more else [])
    in_unit(columns, levels, unit, center_hz, frequencies if len(frequencies) else None, gain)
    names = POINT_COLUMNS + (("above",) if has_limit else ()) + (MORE_COLUMNS if more else ())
    return table(columns, names)


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
