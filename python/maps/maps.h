#pragma once

#include <pybind11/pybind11.h>

namespace rfu::python {

/// Rasters, their places and colours, control points, and radio links over a map.
void addMaps(pybind11::module_& module);

}  // namespace rfu::python
