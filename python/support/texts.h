#pragma once

#include <pybind11/pybind11.h>

#include <QFile>
#include <QString>
#include <string>
#include <string_view>

namespace rfu::python {

namespace py = pybind11;

/// A text of the middle floor, which may quote bytes of an input that are no UTF-8.
inline py::str textOf(std::string_view text) {
    return py::reinterpret_steal<py::str>(
        PyUnicode_DecodeUTF8(text.data(), static_cast<py::ssize_t>(text.size()), "replace"));
}

inline py::str textOf(const QString& text) {
    return textOf(std::string_view(text.toStdString()));
}

/// The name of a file, as os.fsencode() gives it.
inline QString fileOf(const py::bytes& name) {
    return QFile::decodeName(QByteArray::fromStdString(name));
}

}  // namespace rfu::python
