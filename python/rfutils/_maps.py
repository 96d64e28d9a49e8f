"""Raster maps, their places and colours."""
from __future__ import annotations

import os
from typing import Any, Dict, NamedTuple, Optional, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _core

Path = Union[str, "os.PathLike[str]"]
Point = Tuple[float, float]


class Affine(NamedTuple):
    """From columns and rows to map coordinates, in the convention of rasterio: x = a column + b row + c, y = d column + e row + f.

    `affine.Affine(*transform)` is that of rasterio, and GDAL's geotransform is (c, a, b, f, d, e). Whole columns and rows are the
    corners of cells, halves their centres.
    """

    a: float
    b: float
    c: float
    d: float
    e: float
    f: float

    def __mul__(self, cell: Any) -> Any:
        """The map coordinates of a column and a row, numbers or arrays."""
        column, row = cell
        return self.a * column + self.b * row + self.c, self.d * column + self.e * row + self.f


class ControlPoint(NamedTuple):
    """A point of a raster and where it lies."""

    column: float
    row: float
    x: float
    y: float
    longitude: Optional[float]
    latitude: Optional[float]


class Georeference(NamedTuple):
    """What a TAB file says, `rfutils tab`."""

    raster: str
    raster_file: str
    units: Optional[str]
    utm_zone: Optional[int]
    hemisphere: Optional[str]
    central_meridian: float
    origin_latitude: float
    false_easting: float
    false_northing: float
    points: Tuple[ControlPoint, ...]


class Raster:
    """A raster map: see load_raster()."""

    def __init__(self, path: Path) -> None:
        self.path = os.fsdecode(path)
        self._map = _core.RasterMap(os.fsencode(path))
        #: the cells, row 0 in the north; those that were not measured are masked
        self.values: np.ma.MaskedArray[Any, np.dtype[np.float32]] = np.ma.MaskedArray(  # type: ignore[no-untyped-call]
            self._map.cells(), mask=self._map.is_missing(), fill_value=self._map.no_data())
        grid = self._map.grid()
        #: None where the raster gives no cell size
        self.transform: Optional[Affine] = None
        #: west, south, east and north, the outer edges; None likewise
        self.bounds: Optional[Tuple[float, float, float, float]] = None
        if grid is not None:
            size, west, south, east, north = grid
            self.transform = Affine(size, 0.0, west, 0.0, -size, north)
            self.bounds = (west, south, east, north)

    def __reduce__(self) -> Any:
        return Raster, (self.path,)

    def __repr__(self) -> str:
        rows, columns = self.values.shape
        return f"<rfutils.Raster of {self.path}, {columns} x {rows} cells>"

    @property
    def no_data(self) -> Optional[float]:
        """The value of cells that were not measured, where the file names one."""
        return self._map.no_data()

    @property
    def extent(self) -> Optional[Tuple[float, float, float, float]]:
        """As matplotlib's imshow() takes it: west, east, south and north."""
        return None if self.bounds is None else (self.bounds[0], self.bounds[2], self.bounds[1], self.bounds[3])

    def image(self) -> npt.NDArray[np.uint8]:
        """The map in its colours, rows x columns x RGBA, as `rfutils raster --png` draws it."""
        return self._map.image()  # type: ignore[no-any-return]

    def colormap(self, colors: int = 256) -> Tuple[Any, Any]:
        """The colour table for matplotlib: a colormap of so many colours, and the norm that goes with it.

        >>> terrain = load_raster("terrain.asc")
        >>> colormap, norm = terrain.colormap(1001)
        >>> norm.vmin, norm.vmax, tuple(round(255 * part) for part in colormap(norm(60.0))[:3])
        (0.0, 1000.0, (96, 150, 74))

        The table's ranges are in steps of its whole span over `colors`; image() has the exact colours.
        """
        from matplotlib.colors import ListedColormap, Normalize  # type: ignore[import]
        if colors < 2:
            raise ValueError("a colormap has two colours at least")
        low, high, table = self._map.colors(colors)
        colormap = ListedColormap(table / 255.0, name=os.path.basename(self.path))
        colormap.set_bad(alpha=0.0)
        return colormap, Normalize(low, high)

    def cell_at(self, x: float, y: float) -> Tuple[int, int]:
        """Row and column of the cell at map coordinates.

        >>> load_raster("terrain.asc").cell_at(440000, 5266500)
        (60, 160)
        """
        return self._map.cell_at(x, y)

    def point_at_place(self, latitude: float, longitude: float) -> Point:
        """Map coordinates of a place in degrees, by the TAB file beside the raster.

        >>> [round(part, 1) for part in load_raster("terrain.asc").point_at_place(47.55, 8.2)]
        [439806.7, 5266596.8]
        """
        return self._map.point_at_place(latitude, longitude)

    def profile(self, start: Point, end: Point, *, heights: Tuple[float, float], center_hz: float,
                k: float = 1.333) -> Dict[str, Any]:
        """A radio link over the map, in metres, `rfutils profile`.

        >>> link = load_raster("terrain.asc").profile((441500, 5267000), (441000, 5267200), heights=(20, 20), center_hz=5.8e9)
        >>> link["clear"], round(link["ratio"], 2), round(link["free_space_loss"], 1)
        (True, 5.36, 102.3)

        Besides the columns of the command, `distances` and `heights` of the samples.
        """
        return self._map.profile(start, end, heights, center_hz, k)


def load_raster(path: Path) -> Raster:
    """Loads an ASCII grid, or a grid of floats with its header, and the colour table beside it.

    >>> terrain = load_raster("terrain.asc")
    >>> terrain.values.shape, terrain.values.max(), terrain.transform.c, terrain.transform.f
    ((240, 320), 832.0, 436000.0, 5268000.0)
    """
    return Raster(path)


def control_points(path: Path) -> Georeference:
    """Reads a TAB file.

    >>> georeference = control_points("terrain.tab")
    >>> georeference.utm_zone, georeference.points[0].x, round(georeference.points[0].longitude, 4)
    (32, 436000.0, 8.1492)
    """
    found = _core.control_points(os.fsencode(path))
    found["points"] = tuple(ControlPoint(*point) for point in found["points"])
    return Georeference(**found)

