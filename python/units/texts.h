#pragma once

#include <pybind11/pybind11.h>

namespace rfu::python {

/// Texts of frequencies, ranges and angles.
void addTexts(pybind11::module_& module);

}  // namespace rfu::python
