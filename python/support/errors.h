#pragma once

#include <pybind11/pybind11.h>

#include <stdexcept>
#include <string>

namespace rfu::python {

namespace py = pybind11;

/// Makes InputError of the middle floor the exception of the package.
/// @param exception class that takes file, line (0 for none) and problem
void setInputError(const py::object& exception);

/// Lets the module throw it.
void translateErrors();

/// @throw std::invalid_argument, ValueError in Python
inline void require(bool isRight, const std::string& problem) {
    if (!isRight) {
        throw std::invalid_argument(problem);
    }
}

}  // namespace rfu::python
