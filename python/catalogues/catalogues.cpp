#include "python/catalogues/catalogues.h"

#include <pybind11/stl.h>

#include <vector>

#include "analysis/catalogues/choices.h"
#include "analysis/catalogues/jsonFile.h"
#include "analysis/catalogues/setups.h"
#include "python/support/texts.h"

namespace rfu::python {

namespace {

/// Item, display sequence, code, id and label of each choice, sorted.
py::list choices(const std::vector<py::bytes>& files) {
    ItemChoices catalogue;
    for (const py::bytes& file : files) {
        addChoices(catalogue, fileOf(file));
    }
    py::list all;
    for (const subItem& choice : sortedChoices(catalogue.choices, catalogue.items)) {
        all.append(py::make_tuple(textOf(choice.itemId), choice.dispSeq, choice.enumValue,
                                  textOf(choice.id), textOf(choice.label)));
    }
    return all;
}

/// Group, id and label of each setup, and what was skipped: what is missing, and behind which id.
py::tuple setups(const py::bytes& name) {
    const QString file = fileOf(name);
    py::list skipped;
    py::list all;
    for (const SetupEntry& setup :
         setupsOf(readJsonObject(file), file, [&](const char*missing, const QString&after) {
             skipped.append(py::make_tuple(missing, textOf(after)));
         })) {
        all.append(py::make_tuple(textOf(setup.group), textOf(setup.id), textOf(setup.label)));
    }
    return py::make_tuple(all, skipped);
}

}  // namespace

void addCatalogues(py::module_& module) {
    module.def("choices", &choices);
    module.def("setups", &setups);
}

}  // namespace rfu::python
