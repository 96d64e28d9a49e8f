#include <pybind11/pybind11.h>

#include "python/catalogues/catalogues.h"
#include "python/checks/checks.h"
#include "python/maps/maps.h"
#include "python/recordings/comparisons.h"
#include "python/recordings/source.h"
#include "python/recordings/studies.h"
#include "python/support/errors.h"
#include "python/units/levels.h"
#include "python/units/texts.h"

PYBIND11_MODULE(_core, module) {
    using namespace rfu::python;
    module.attr("__version__") = RFUTILS_VERSION;
    translateErrors();
    module.def("set_input_error", &setInputError);
    addLevels(module);
    addTexts(module);
    addSources(module);
    addStudies(module);
    addComparisons(module);
    addMaps(module);
    addCatalogues(module);
    addChecks(module);
}
