#pragma once

#include <pybind11/pybind11.h>

namespace rfu::python {

/// Choices of settings and result setups.
void addCatalogues(pybind11::module_& module);

}  // namespace rfu::python
