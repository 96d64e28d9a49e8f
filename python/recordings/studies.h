#pragma once

#include <pybind11/pybind11.h>

namespace rfu::python {

/// What is asked of recordings and of states.
void addStudies(pybind11::module_& module);

}  // namespace rfu::python
