"""Recordings of sweeps."""
from __future__ import annotations

import datetime
import os
import tempfile
from typing import Any, Iterator, List, NamedTuple, Optional, Sequence, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _core
from ._answers import Occupancy, marks_of, occupancy_of, peaks_of, points_of, power_of
from ._errors import note
from ._states import State
from ._tables import Table, in_unit, table
from ._units import level

Path = Union[str, "os.PathLike[str]"]
Band = Tuple[float, float]
Time = Union[str, datetime.datetime, np.datetime64]

def encoded(path: Path) -> bytes:
    """The name of a file; "-" is one too, not standard input."""
    name = os.fsencode(path)
    return b"./-" if name == b"-" else name


def _time_text(time: Optional[Time]) -> Optional[str]:
    if time is None or isinstance(time, str):
        return time
    if isinstance(time, datetime.datetime):
        time = np.datetime64(time.replace(tzinfo=None), "us")
    return str(time.astype("M8[us]")).replace("T", " ")


def _bands(band: Union[None, Band, Sequence[Band]]) -> List[Band]:
    if band is None:
        return []
    bands = np.atleast_2d(np.asarray(band, dtype=np.float64))
    if bands.ndim != 2 or bands.shape[1] != 2:
        raise ValueError("a band is two frequencies in Hz, the lower one first")
    return [(float(low), float(high)) for low, high in bands]


class Chunk(NamedTuple):
    """Some sweeps of a recording, one behind the other."""

    #: when each sweep began, datetime64[us]; NaT where the recording has no times
    times: npt.NDArray[np.datetime64]
    #: sweeps x points, dBm; NaN where a point was not measured
    levels: npt.NDArray[Any]


class Comparison(NamedTuple):
    """Two recordings beside each other."""

    #: a row for each point, the difference being b minus a
    points: Table
    #: the points that changed by more than the limit, gathered; None without a limit
    signals: Optional[Table]


class Recording:
    """A recording of sweeps in one file or several, or a window of it.

    >>> recording = Recording("fm_band.csv", band=(98e6, 98.5e6), start="21:20", stop="21:30")
    >>> recording.levels.shape, recording.frequencies[0], recording.times[0]
    ((61, 13), 98000000.0, numpy.datetime64('2024-05-04T21:20:00.000000'))

    `path` is a file as rtl_power, hackrf_sweep or soapy_power write it, compressed or not, or a list of them, which are one
    recording. What follows is that of the command: a `band` from low to high in Hz, or several; times from `start` to
    `stop`, as text, datetime or datetime64; of these sweeps each `every`-th, and the `last` so many; `offset_db` and the file
    `correction` are added to the levels. With `strict`, a line that makes no sense is an error; else a `Note` tells of it.

    Files are opened when a result is asked for. `levels` and `times` are kept once they were read; nothing else is.
    """

    def __init__(self, path: Union[Path, Sequence[Path]], *, band: Union[None, Band, Sequence[Band]] = None,
                 start: Optional[Time] = None, stop: Optional[Time] = None, every: int = 1, last: int = 0,
                 offset_db: float = 0.0, correction: Optional[Path] = None, strict: bool = False) -> None:
        paths = [path] if isinstance(path, (str, bytes, os.PathLike)) else list(path)
        self._arguments = ([encoded(one) for one in paths], _bands(band), _time_text(start), _time_text(stop), every, last,
                           float(offset_db), None if correction is None else encoded(correction), strict)
        self._source = _core.Source(*self._arguments)
        self._axis: Optional[_core.Axis] = None
        self._whole: Optional[Chunk] = None

    def __reduce__(self) -> Any:
        return _recording_of, (self._arguments,)

    def __repr__(self) -> str:
        files = self.files
        return f"<rfutils.Recording of {files[0]}" + (f" and {len(files) - 1} more" if len(files) > 1 else "") + ">"

    @property
    def files(self) -> List[str]:
        """The names of its files."""
        return [os.fsdecode(file) for file in self._arguments[0]]

    def chunks(self, sweeps: int = 1000, dtype: npt.DTypeLike = np.float64) -> Iterator[Chunk]:
        """So many sweeps at a time, in memory that does not grow with the recording.

        >>> sum(len(chunk.levels) for chunk in Recording("fm_band.csv").chunks(100))
        240
        """
        if sweeps < 1:
            raise ValueError("a chunk has a sweep at least")
        if np.dtype(dtype) not in (np.float32, np.float64):
            raise TypeError("levels are float64 or float32")
        reader = _core.Reader(self._source)
        read = reader.read_singles if np.dtype(dtype) == np.float32 else reader.read
        while True:
            part = read(sweeps)
            note(reader.take_notes())
            if part is None:
                return
            if self._axis is None:
                self._axis = reader.axis()
            yield Chunk(part[0].view("M8[us]"), part[1])

    def read(self, dtype: npt.DTypeLike = np.float64) -> Chunk:
        """All sweeps at once."""
        return next(self.chunks(2**62, dtype))

    def _all(self) -> Chunk:
        if self._whole is None:
            self._whole = self.read()
        return self._whole

    def _known_axis(self) -> _core.Axis:
        if self._axis is None:
            next(self.chunks(1))
        assert self._axis is not None
        return self._axis

    @property
    def levels(self) -> npt.NDArray[np.float64]:
        """Sweeps x points, dBm; NaN where a point was not measured."""
        return self._all().levels

    @property
    def times(self) -> npt.NDArray[np.datetime64]:
        """When each sweep began; NaT where the recording has no times."""
        return self._all().times

    @property
    def frequencies(self) -> npt.NDArray[np.float64]:
        """Where the bin of each point begins, Hz; empty where the recording has no frequencies."""
        return self._known_axis().frequencies_hz()  # type: ignore[no-any-return]

    @property
    def bin_ends(self) -> npt.NDArray[np.float64]:
        """Where the bin of each point ends, Hz."""
        return self._known_axis().bin_ends_hz()  # type: ignore[no-any-return]

    @property
    def bands(self) -> List[Band]:
        """Where the points lie without a gap, Hz.

        >>> Recording("fm_band.csv").bands
        [(88000000.0, 108000000.0)]
        """
        return [(low, high) for _, low, high in self._known_axis().bands_hz()]

    def points(self, *, limit: Union[None, float, str] = None, keep: Optional[int] = None, more: bool = False,
               unit: str = "dBm", center_hz: Optional[float] = None, gain: float = 0.0) -> Table:
        """The statistics of each point, `rfutils trace --all-points`.

        >>> points = Recording("fm_band.csv").points(limit=-60)
        >>> points["maximum"].max(), points["above"][264]
        (-37.68, 240)

        `limit` is a level, above which levels are counted; `keep` takes the most recent so many sweeps; `more` adds mean
        power, median, standard deviation, and sweep and time of the maximum, and holds the levels. Points that were never
        measured have NaN.
        """
        study = _core.Points(_limit(limit, center_hz, gain), keep, more, None)
        note(study.read(self._source))
        return points_of(study, limit is not None, more, unit, center_hz, gain)

    def markers(self, frequencies_hz: npt.ArrayLike = (), *, points: npt.ArrayLike = (), limit: Union[None, float, str] = None,
                keep: Optional[int] = None, more: bool = False, unit: str = "dBm", center_hz: Optional[float] = None,
                gain: float = 0.0) -> Table:
        """The statistics of markers, `rfutils trace --marker`.

        >>> markers = Recording("fm_band.csv").markers([88.1e6, 98.3e6], limit=-60)
        >>> markers[["marker_hz", "point", "maximum", "above"]].tolist()
        [(88100000.0, 3, -49.04, 240), (98300000.0, 264, -37.68, 240)]

        A frequency stands for the nearest point of its band, the lower one of two equally near; one outside the bands is an
        `InputError`. `points` are markers by the numbers of their points, whose `marker_hz` is NaN; they come behind the
        others. What else there is, and the columns, are those of points(); only the levels at the markers are held.
        """
        marks = marks_of(frequencies_hz, points)
        study = _core.Points(_limit(limit, center_hz, gain), keep, more, marks)
        note(study.read(self._source))
        return points_of(study, limit is not None, more, unit, center_hz, gain, marks)

    def peaks(self, *, above_db: Optional[float] = None, width_at_db: float = 6.0, window: int = 101,
              spurs: Sequence[Tuple[Optional[float], float]] = (), unit: str = "dBm", center_hz: Optional[float] = None,
              gain: float = 0.0) -> Table:
        """The signals, `rfutils peaks`.

        >>> peaks = Recording("fm_band.csv").peaks(above_db=50)
        >>> peaks["frequency_hz"].round(-3).tolist()
        [92803000.0, 98302000.0, 105189000.0]

        `spurs` are ranges to leave out, a middle and a width in Hz; for a middle of None that of every hop.
        """
        study = _core.Signals()
        note(study.read(self._source))
        _note_medians(study.resolution())
        return peaks_of(study, above_db, width_at_db, window, spurs, unit, center_hz, gain)

    def occupancy(self, *, limit: Union[None, float, str] = None, above_db: Optional[float] = None, window: int = 101,
                  channels: Optional[Tuple[float, float, int]] = None, channel_width_hz: Optional[float] = None,
                  by_hour: bool = False, unit: str = "dBm", center_hz: Optional[float] = None,
                  gain: float = 0.0) -> Occupancy:
        """How busy channels are, `rfutils occupancy`.

        >>> busy = Recording("fm_band.csv").occupancy(limit=-70, channels=(88e6, 200e3, 100))
        >>> busy.channels["occupied"][:3].tolist(), busy.band["fbo"].round(4).item()
        ([240, 236, 0], 0.0953)

        Either `limit`, a level or a text with its unit, or `above_db` is required. `channels` are where the first one
        begins, the distance from one to the next in Hz, and how many; without, each point is one.
        """
        study = self._occupancies(limit, above_db, window, channels, channel_width_hz, by_hour, center_hz, gain)
        note(study.read(self._source))
        return occupancy_of(study, by_hour, unit, center_hz, gain)

    def power(self, *channels: Band, spacing_hz: Optional[float] = None, percent: float = 99.0, enbw_bins: float = 1.0,
              series: bool = False, unit: str = "dBm", center_hz: Optional[float] = None, gain: float = 0.0) -> Table:
        """The power in channels and the bandwidth that it occupies, `rfutils power`.

        >>> power = Recording("fm_band.csv").power((98.2e6, 98.4e6))
        >>> power["power"].round(1).item()
        -37.1

        A channel is two frequencies in Hz. `spacing_hz` adds the neighbours and their power relative to the channel; with
        `series` there is a row for each sweep and channel.
        """
        study = _core.Powers(list(channels), spacing_hz, percent, enbw_bins, series)
        note(study.read(self._source))
        return power_of(study, series, spacing_hz is not None, unit, center_hz, gain)

    def mask(self, path: Path, *, of: str = "maximum", unit: str = "dBm", center_hz: Optional[float] = None,
             gain: float = 0.0) -> Table:
        """Where points lie beyond the limits of a file, `rfutils mask`.

        >>> Recording("wifi_band.csv").mask("wifi_mask.csv")[["frequency_hz", "level", "margin"]].tolist()
        [(2480000000.0, -60.68, -9.32)]
        """
        if of not in ("maximum", "average"):
            raise ValueError(f"{of!r} is not maximum or average")
        study = _core.Points(None, None, False, None)
        note(study.read(self._source))
        axis = study.axis()
        _core.require_frequencies(axis, encoded(self.files[0]))
        frequencies = axis.frequencies_hz()
        columns = study.rows()
        in_unit(columns, [of], unit, center_hz, frequencies, gain)
        levels, ends = columns[of], axis.bin_ends_hz()
        rows = [(frequencies[first], ends[last], frequencies[worst], levels[worst], limit, margin)
                for first, last, worst, _, limit, margin in _core.violations(axis, levels, encoded(path), unit)]
        names = ("from_hz", "to_hz", "frequency_hz", "level", "limit", "margin")
        return np.array(rows, dtype=[(name, np.float64) for name in names])

    def compare(self, other: Recording, *, of: str = "average", above_db: Optional[float] = None, resample: bool = False,
                unit: str = "dBm", center_hz: Optional[float] = None, gain: float = 0.0) -> Comparison:
        """A statistic of each point beside that of another recording, `rfutils compare`.

        >>> after = Recording("fm_next_day.csv")
        >>> Recording("fm_band.csv").compare(after, above_db=10).signals["difference"].round(2).tolist()
        [-12.52, -13.08, 27.04]
        """
        a, b = _core.PointTrace(self._source, of), _core.PointTrace(other._source, of)
        note([*a.notes(), *b.notes()])
        _note_medians(max(a.resolution(), b.resolution()))
        frequencies = a.axis().frequencies_hz()
        ends = a.axis().bin_ends_hz()
        columns = {"a": a.levels(), "b": a.bring(b, resample)}
        columns["difference"] = columns["b"] - columns["a"]
        columns["point"] = np.arange(len(columns["a"]))
        columns["frequency_hz"] = frequencies if len(frequencies) else np.full(len(columns["a"]), np.nan)
        changes = None if above_db is None else np.array(a.changes(columns["difference"], above_db),
                                                         dtype=np.int64).reshape(-1, 3)
        in_unit(columns, ["a", "b"], unit, center_hz, frequencies, gain)
        points = table(columns, ("point", "frequency_hz", "a", "b", "difference"))
        if changes is None:
            return Comparison(points, None)
        ends = ends if len(ends) else columns["frequency_hz"]
        signals = {name: points[name][changes[:, 2]] for name in points.dtype.names or ()}
        signals["from_hz"] = columns["frequency_hz"][changes[:, 0]]
        signals["to_hz"] = ends[changes[:, 1]]
        return Comparison(points, table(signals, ("from_hz", "to_hz", "point", "frequency_hz", "a", "b", "difference")))

    def cut(self, path: Path) -> None:
        """Writes the window as a recording of its own, `rfutils cut`. It replaces an older file once it is complete."""
        target = os.path.abspath(os.fsdecode(path))
        for file in self.files:
            if os.path.exists(target) and os.path.samefile(target, file):
                raise ValueError(f"{os.fsdecode(path)}: cannot be written: it is the input {file}")
        handle, part = tempfile.mkstemp(dir=os.path.dirname(target))
        try:
            with os.fdopen(handle, "wb") as output:
                note(_core.cut(self._source, output.write))
            os.chmod(part, 0o666 & ~_umask())
            os.replace(part, target)
        except BaseException:
            os.unlink(part)
            raise

    def state(self, of: str, *channels: Band, limit: Union[None, float, str] = None, center_hz: Optional[float] = None,
              gain: float = 0.0, **options: Any) -> State:
        """What a command would write with `--state`, of `"peaks"`, `"points"`, `"occupancy"` or `"power"`.

        >>> parts = [Recording("fm_band.csv", stop="21:34:50"), Recording("fm_band.csv", start="21:35")]
        >>> whole = State.merged(part.state("peaks") for part in parts)
        >>> len(whole.peaks())
        16

        The options are those that decide what is counted: `limit` of points; `limit`, `channels`, `channel_width_hz`,
        `by_hour`, `center_hz` and `gain` of occupancy; the channels, `spacing_hz`, `percent` and `enbw_bins` of power.
        """
        study: Any
        if of == "peaks":
            study = _core.Signals(**options)
        elif of == "points":
            study = _core.Points(_limit(limit, center_hz, gain), None, False, None, **options)
        elif of == "occupancy":
            if limit is None:
                raise ValueError("a state needs a limit: a floor is that of a whole recording")
            study = self._occupancies(limit, None, 101, options.pop("channels", None), options.pop("channel_width_hz", None),
                                      options.pop("by_hour", False), center_hz, gain, **options)
        elif of == "power":
            study = _core.Powers(list(channels), options.pop("spacing_hz", None), options.pop("percent", 99.0),
                                 options.pop("enbw_bins", 1.0), True, **options)
        else:
            raise ValueError(f"there are states of peaks, points, occupancy and power, not of {of!r}")
        note(study.read(self._source))
        return State(study.state(), name=self.files[0])

    @staticmethod
    def _occupancies(limit: Union[None, float, str], above_db: Optional[float], window: int,
                     channels: Optional[Tuple[float, float, int]], channel_width_hz: Optional[float], by_hour: bool,
                     center_hz: Optional[float], gain: float) -> _core.Occupancies:
        if (limit is None) == (above_db is None):
            raise ValueError("a threshold is limit or above_db, one of the two")
        if above_db is not None and not above_db > 0:
            raise ValueError("above_db is above zero")
        if channel_width_hz is not None and channels is None:
            raise ValueError("channel_width_hz needs channels")
        level_and_unit = _core.entry(limit) if isinstance(limit, str) else None if limit is None else (float(limit), "dBm")
        return _core.Occupancies(level_and_unit, center_hz, gain if gain else None, above_db or 0.0, window, channels,
                                 channel_width_hz, by_hour)


def _recording_of(arguments: Any) -> Recording:
    files, bands, start, stop, every, last, offset, correction, strict = arguments
    return Recording([os.fsdecode(file) for file in files], band=bands or None, start=start, stop=stop, every=every, last=last,
                     offset_db=offset, correction=None if correction is None else os.fsdecode(correction), strict=strict)


def _note_medians(resolution_db: float) -> None:
    if resolution_db > 0:
        note([f"medians are within {resolution_db:.2f} dB"])


def _umask() -> int:
    mask = os.umask(0)
    os.umask(mask)
    return mask


def _limit(limit: Union[None, float, str], center_hz: Optional[float], gain: float) -> Optional[float]:
    return None if limit is None else float(level(limit, center_hz=center_hz, gain=gain))
