"""Tables as structured arrays."""
from __future__ import annotations

from typing import Any, Mapping, Optional, Sequence

import numpy as np

from ._units import _converted

Table = np.ndarray[Any, np.dtype[np.void]]


def table(columns: Mapping[str, Any], names: Sequence[str]) -> Table:
    """The columns of these names, in their order."""
    rows = np.empty(len(columns[names[0]]), dtype=[(name, columns[name].dtype) for name in names])
    for name in names:
        rows[name] = columns[name]
    return rows


def in_unit(columns: dict[str, Any], names: Sequence[str], unit: str, center_hz: Optional[float], own_hz: Any,
            gain: float) -> None:
    """Brings columns of dBm to a unit. Without a frequency of the antenna each row has its own."""
    for name in names:
        if unit != "dBm" and len(columns[name]):
            columns[name] = _converted(columns[name], unit, "dBm", own_hz if center_hz is None else center_hz, gain)
