#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/recordings/recording.h"

namespace rfu::python {

namespace py = pybind11;

/// What a recording is read from; given to everything that reads it.
struct Source {
    RecordingSource source;

    /// The same that puts what is noted into a list.
    RecordingSource noting(std::vector<std::string>& notes) const;
};

/// Binds Source, the axis, and what hands out sweeps.
void addSources(py::module_& module);

/// Of an axis in Hz: where the bin of each point begins.
std::vector<double> hertzOf(const FrequencyAxis& axis);

/// The microseconds of datetime64[us]; kNotATime of an empty stamp.
std::int64_t unixTimeOf(std::string_view stamp);
inline constexpr std::int64_t kNotATime = INT64_MIN;

}  // namespace rfu::python
