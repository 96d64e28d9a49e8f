#pragma once

#include <pybind11/pybind11.h>

namespace rfu::python {

/// Levels in units, their texts, and the units themselves.
void addLevels(pybind11::module_& module);

}  // namespace rfu::python
