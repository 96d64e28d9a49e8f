#pragma once

#include <pybind11/pybind11.h>

namespace rfu::python {

/// Recordings beside masks, beside each other, and parts of them as files.
void addComparisons(pybind11::module_& module);

}  // namespace rfu::python
