#include "python/support/errors.h"

#include <exception>

#include "analysis/support/inputError.h"
#include "python/support/texts.h"

namespace rfu::python {

namespace {

// Never destroyed: the interpreter is gone when the program ends.
py::object& inputError() {
    static auto* const exception = new py::object();
    return *exception;
}

}  // namespace

void setInputError(const py::object& exception) {
    inputError() = exception;
}

void translateErrors() {
    py::register_local_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown) {
                std::rethrow_exception(thrown);
            }
        } catch (const InputError& error) {
            const py::object& type = inputError();
            const py::object value =
                type(textOf(error.file()), error.line(), textOf(error.problem()));
            PyErr_SetObject(type.ptr(), value.ptr());
        }
    });
}

}  // namespace rfu::python
