"""Levels in units and their texts. Frequencies are in Hz."""
from __future__ import annotations

from typing import Any, NamedTuple, Optional, Tuple, Union, overload

import numpy as np
import numpy.typing as npt

from . import _core
from ._errors import note

Scalar = Union[float, int, "np.floating[Any]", "np.integer[Any]"]
Array = npt.NDArray[np.float64]

_HERTZ = "frequencies are numbers of Hz"
_LIMITS = "limits are numbers"


class Unit(NamedTuple):
    """A unit that the instrument shows or reads, as `rfutils units` lists it."""

    name: str
    quantity: str
    #: "name" if levels are shown in it by asking for it, "prefix" if the instrument chooses it, "no" if it is never shown
    from_dbm: str
    #: whether values are read in it
    to_dbm: bool
    #: whether it needs the frequency of the antenna, `center_hz`
    antenna: bool


class Dms(NamedTuple):
    """An angle in degrees, minutes and whole seconds."""

    sign: int
    degrees: int
    minutes: int
    seconds: int


def units() -> list[Unit]:
    """All units.

    >>> [unit.name for unit in units() if unit.from_dbm == "name" and not unit.antenna]
    ['dBm', 'dBV', 'dBmV', 'dBuV', 'V', 'W']
    """
    return [Unit(*unit) for unit in _core.units()]


def _numbers(values: Any, what: str = "levels are numbers", reader: str = "level") -> np.ndarray[Any, Any]:
    """As an array, without a copy where it is one. Masked elements become NaN."""
    if isinstance(values, np.ma.MaskedArray):
        values = np.ma.filled(values.astype(np.float64), np.nan)  # type: ignore[no-untyped-call]
    array = np.asarray(values)
    if array.dtype.kind not in "fiub" or array.dtype.itemsize > 8:
        raise TypeError(f"{what}, not {array.dtype}; rfutils.{reader}() reads texts")
    return array


def _number(value: Any, what: str) -> float:
    """Where arrays are not taken."""
    if not isinstance(value, (str, bytes)):
        try:
            return float(value)
        except TypeError:
            pass
    raise TypeError(f"{what}, not {value!r}" if isinstance(value, str) else f"{what}, not {type(value).__name__}")


def _text_or_texts(texts: list[str], shape: Tuple[int, ...]) -> Any:
    return np.array(texts, dtype=np.str_).reshape(shape) if shape else texts[0]


def _shaped(values: Any, center_hz: Any, needs_antenna: bool, unit: str) -> Tuple[Any, Any]:
    """Values, and of each the frequency of the antenna. Neither is copied."""
    array = _numbers(values)
    if center_hz is None:
        if needs_antenna:
            raise ValueError(f"{unit} needs the centre frequency of the antenna: center_hz")
        return array, np.broadcast_to(np.nan, array.shape)
    centers = np.asarray(center_hz, dtype=np.float64)
    if not (centers > 0).all():
        raise ValueError("center_hz has to be above zero")
    array, centers = np.broadcast_arrays(array, centers, subok=False)
    return array, centers


def _like(values: Any, result: Any) -> Any:
    """The result as what came in: a number, a masked array or an array."""
    if isinstance(values, np.ma.MaskedArray):
        return np.ma.MaskedArray(result, mask=values.mask)  # type: ignore[no-untyped-call]
    return result.item() if result.ndim == 0 else result


def _converted(values: Any, to: str, unit: str, center_hz: Any, gain: float) -> Any:
    is_field = _core.needs_antenna_to_show(to) or _core.needs_antenna_to_read(unit)
    array, centers = _shaped(values, center_hz, is_field, to)
    return _like(values, _core.convert(array, centers, is_field, to, unit, gain))


@overload
def convert(  # type: ignore[misc]
        levels: Scalar, to: str, *, unit: str = ..., center_hz: Optional[Scalar] = ..., gain: float = ...) -> float: ...
@overload
def convert(levels: npt.ArrayLike, to: str, *, unit: str = ..., center_hz: Optional[npt.ArrayLike] = ...,
            gain: float = ...) -> Array: ...
def convert(levels: Any, to: str, *, unit: str = "dBm", center_hz: Any = None, gain: float = 0.0) -> Any:
    """Levels in another unit, as numbers: unrounded and without prefix, those of `rfutils convert --format csv`.

    >>> convert(-30, "dBuV")
    76.9897
    >>> convert([-30, 0], to="V/m", center_hz=100e6)
    array([0.02290868, 0.72443594])
    >>> convert(1, "dBm", unit="mV")
    -46.98900000000001

    `levels` is a number or an array of any shape, which is read where it is if it holds float64 or float32, without the lock
    of the interpreter. NaN, and a masked element, stays as it is. Field units refer to an antenna: its frequency
    `center_hz`, one or an array that broadcasts with the levels, and its `gain` in dBi. Values of another `unit` than dBm
    are read as the instrument reads an entry, which cuts them after three decimals of dBm; linear ones have to be above zero.
    """
    return _converted(levels, to, unit, center_hz, gain)


@overload
def level(  # type: ignore[misc]
        value: Union[Scalar, str], unit: str = ..., *, center_hz: Optional[Scalar] = ..., gain: float = ...) -> float: ...
@overload
def level(value: npt.ArrayLike, unit: str = ..., *, center_hz: Optional[npt.ArrayLike] = ..., gain: float = ...) -> Array: ...
def level(value: Any, unit: str = "dBm", *, center_hz: Any = None, gain: float = 0.0) -> Any:
    """Values of a unit, or a text with its unit, as levels in dBm, as the instrument reads an entry.

    >>> level("2.5 mV")
    -39.03
    >>> round(level(30, "dBuV"), 3)
    -76.989
    >>> level("87.2dBuV/m", center_hz=100e6)
    -30.0
    """
    if isinstance(value, str):
        value, unit = _core.entry(value)
    is_field = _core.needs_antenna_to_read(unit)
    array, centers = _shaped(value, center_hz, is_field, unit)
    return _like(value, _core.levels(array, centers, is_field, unit, gain))


@overload
def text(  # type: ignore[misc]
        level: Scalar, unit: str = ..., *, center_hz: Optional[Scalar] = ..., gain: float = ...) -> str: ...
@overload
def text(level: npt.ArrayLike, unit: str = ..., *, center_hz: Optional[npt.ArrayLike] = ...,
         gain: float = ...) -> npt.NDArray[np.str_]: ...
def text(level: Any, unit: str = "dBm", *, center_hz: Any = None, gain: float = 0.0) -> Any:
    """The text that the instrument shows of a level in dBm, or an array of texts.

    >>> text(-30, "dBuV")
    '77.0 dBuV'
    >>> text([-30, -50], "V").tolist()
    ['7.07 mV', '0.71 mV']

    A field too small for any prefix has an empty text. Above 100 V the instrument shows kilovolts under the label V, from 1 kW
    kilowatts and from 1 MW megawatts under the label W; a `Note` tells of the first.
    """
    is_field = _core.needs_antenna_to_show(unit)
    array, centers = _shaped(level, center_hz, is_field, unit)
    texts, meaning = _core.texts(array, centers, is_field, unit, gain)
    if meaning:
        note([meaning])
    return _text_or_texts(texts, array.shape)


def to_scale(levels: Any, index: int, *, center_hz: Any = None, gain: float = 0.0) -> Any:
    """Levels in dBm in a numeric scale, `rfutils scale`.

    >>> to_scale(-30, 3)
    76.9897
    """
    return _converted(levels, _core.scale_unit(index)[0], "dBm", center_hz, gain)


def from_scale(values: Any, index: int, *, center_hz: Any = None, gain: float = 0.0) -> Any:
    """Values of a numeric scale as levels in dBm, not cut, `rfutils scale --to-dbm`.

    >>> from_scale(0.001, 5)  # watts come back by the formula of the volts
    -46.9897
    """
    unit, is_field, comes_back = _core.scale_unit(index)
    if not comes_back:
        raise ValueError(f"scale {index} ({unit}) has no way back to dBm; rfutils.level() reads {unit}")
    array, centers = _shaped(values, center_hz, is_field, unit)
    return _like(values, _core.from_scale(array, centers, index, gain))


@overload
def frequency_text(frequency_hz: Scalar) -> str: ...  # type: ignore[misc]
@overload
def frequency_text(frequency_hz: npt.ArrayLike) -> npt.NDArray[np.str_]: ...
def frequency_text(frequency_hz: Any) -> Any:
    """A frequency as the instrument shows it, or an array of texts.

    >>> frequency_text(88.1e6)
    '88.100000 MHz'
    >>> frequency_text([100e3, 2.4e9]).tolist()
    ['100.000 kHz', '2.400000000 GHz']
    """
    array = _numbers(frequency_hz, _HERTZ, "frequency_hz")
    return _text_or_texts(_core.frequency_texts(array), array.shape)


@overload
def width_text(width_hz: Scalar) -> str: ...  # type: ignore[misc]
@overload
def width_text(width_hz: npt.ArrayLike) -> npt.NDArray[np.str_]: ...
def width_text(width_hz: Any) -> Any:
    """A frequency width as the instrument shows it, or an array of texts.

    >>> width_text(200e3)
    '200kHz'
    """
    array = _numbers(width_hz, _HERTZ, "frequency_hz")
    return _text_or_texts(_core.width_texts(array), array.shape)


def frequency_hz(text: str) -> float:
    """A frequency as the command takes it; a bare number is in MHz.

    >>> frequency_hz("88.1M"), frequency_hz("2.4 GHz"), frequency_hz("100")
    (88100000.0, 2400000000.0, 100000000.0)
    """
    if not isinstance(text, str):
        raise TypeError(f"a frequency to read is a text such as '88.1MHz', not {type(text).__name__}")
    return _core.frequency(text)


def range_text(type: int, minimum: float, maximum: float, *, whole: bool = False, center_hz: Optional[float] = None,
               gain: float = 0.0) -> str:
    """The text that names the limits of an entry, with the blanks at its ends, `rfutils range`.

    >>> range_text(2, -10, 20)
    ' {Min: -10.00 dBm, Max: 20.00 dBm} '
    >>> range_text(6, 0, 100, whole=True)
    ' {Min: 0 Sec, Max: 100 Sec} '

    `type` is a code that `rfutils range --help` lists. `whole` gives the text of an entry of whole numbers. The limits of
    type 0 are frequencies: see frequency_range_text().
    """
    minimum, maximum = _number(minimum, _LIMITS), _number(maximum, _LIMITS)
    if whole:
        if int(minimum) != minimum or int(maximum) != maximum:
            raise ValueError("the limits of whole numbers are whole")
        return _core.whole_range_text(int(minimum), int(maximum), type)
    return _core.range_text(minimum, maximum, type, center_hz, gain)


def frequency_range_text(minimum_hz: float, maximum_hz: float) -> str:
    """The text that names the limits of a frequency.

    >>> frequency_range_text(9e3, 6e9)
    ' {Min: 9.000 kHz, Max: 6.000000000 GHz} '
    """
    return _core.frequency_range_text(_number(minimum_hz, _LIMITS), _number(maximum_hz, _LIMITS))


def to_dms(degrees: float) -> Dms:
    """Decimal degrees in degrees, minutes and whole seconds, cut.

    >>> to_dms(-33.8688)
    Dms(sign=-1, degrees=33, minutes=52, seconds=7)
    """
    return Dms(*_core.to_dms(_number(degrees, "degrees are a number")))


def from_dms(degrees: float, minutes: float = 0.0, seconds: float = 0.0, *, sign: int = 1) -> float:
    """Degrees, minutes and seconds, which are not negative, as decimal degrees.

    >>> from_dms(33, 52, 7.68, sign=-1)
    -33.8688
    """
    degrees, minutes, seconds = (_number(part, "degrees, minutes and seconds are numbers")
                                 for part in (degrees, minutes, seconds))
    if sign not in (1, -1):
        raise ValueError("the sign is 1 or -1")
    if not (degrees >= 0 and 0 <= minutes < 60 and 0 <= seconds < 60):
        raise ValueError("minutes and seconds are below 60, and only the sign is negative")
    return _core.from_dms(sign, degrees, minutes, seconds)
