"""The numbers and texts of an RF measurement instrument, its recordings and its maps.

Frequencies are in Hz, levels in dBm unless a unit is named, antenna gains in dBi. Results are bit for bit those of the library
and of the command `rfutils`.
"""
from ._answers import Occupancy
from ._catalogues import Catalogue, Choice, Choices, Setup, Setups
from ._checks import Finding, Rule, check, rules
from ._core import __version__ as __version__
from ._errors import InputError, Note
from ._maps import Affine, ControlPoint, Georeference, Raster, control_points, load_raster
from ._recording import Chunk, Comparison, Recording
from ._states import State
from ._units import (Dms, Unit, convert, frequency_hz, frequency_range_text, frequency_text, from_dms, from_scale, level,
                     range_text, text, to_dms, to_scale, units, width_text)

__all__ = [
    "Affine", "Catalogue", "Choice", "Choices", "Chunk", "Comparison", "ControlPoint", "Dms", "Finding", "Georeference",
    "InputError", "Note", "Occupancy", "Raster", "Recording", "Rule", "Setup", "Setups", "State", "Unit", "check",
    "control_points", "convert", "frequency_hz", "frequency_range_text", "frequency_text", "from_dms", "from_scale", "level",
    "load_raster", "range_text", "rules", "text", "to_dms", "to_scale", "units", "width_text"]
