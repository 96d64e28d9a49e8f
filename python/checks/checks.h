#pragma once

#include <pybind11/pybind11.h>

namespace rfu::python {

/// What is found in files, and the rules.
void addChecks(pybind11::module_& module);

}  // namespace rfu::python
