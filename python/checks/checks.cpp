#include "python/checks/checks.h"

#include <pybind11/stl.h>

#include <QtGlobal>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "analysis/checks/checkFiles.h"
#include "analysis/checks/fileKind.h"
#include "analysis/checks/rules.h"
#include "analysis/support/inputError.h"
#include "python/support/errors.h"
#include "python/support/texts.h"

namespace rfu::python {

namespace {

/// While one lives, what the library logs on its thread is dropped: findings say it.
class Silence {
public:
    Silence() {
        others();
        isSilent() = true;
    }
    ~Silence() { isSilent() = false; }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    static bool& isSilent() {
        thread_local bool silent = false;
        return silent;
    }

    /// Takes what is logged on other threads; installs log() at the first call.
    static QtMessageHandler others() {
        static const QtMessageHandler before = qInstallMessageHandler(&log);
        return before;
    }

    static void log(QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (!isSilent()) {
            others()(type, context, text);
        }
    }
};

FileKind kindNamed(const std::string& name) {
    std::string names;
    const std::vector<KnownKind>& kinds = knownKinds();
    for (const KnownKind& known : kinds) {
        if (name == known.name) {
            return known.kind;
        }
        const bool isLast = &known == &kinds.back();
        names += (names.empty() ? "" : isLast ? " or " : ", ") + std::string(known.name);
    }
    throw std::invalid_argument(rfu::quoted(name) + " is not " + names);
}

py::object numberOrNone(long long number) {
    return number > 0 ? py::object(py::int_(number)) : py::none();
}

/// Appends file, line, column, severity, rule and text of each finding, as the command lists them.
/// @return the command's note; empty without one
std::string check(const QStringList& names, const CheckOptions& options, py::list& found) {
    const py::gil_scoped_release unlocked;
    const Silence silence;
    return noteOfPassedOver(checkFiles(names, options, [&found](const CheckedFile& file) {
        const py::gil_scoped_acquire locked;
        if (PyErr_CheckSignals() != 0) {
            throw py::error_already_set();
        }
        for (const Finding& finding : listedFindings(file)) {
            found.append(py::make_tuple(textOf(finding.file), numberOrNone(finding.line),
                                        numberOrNone(finding.column), nameOf(finding.severity),
                                        textOf(finding.rule), textOf(finding.text)));
        }
    }));
}

/// The findings in files, and the notes on them.
std::pair<py::list, std::vector<py::str>> findings(const std::vector<py::bytes>& files,
                                                   const std::optional<std::string>& kind,
                                                   const std::vector<std::string>& ignored) {
    QStringList names;
    for (const py::bytes& file : files) {
        names.push_back(fileOf(file));
    }
    CheckOptions options{kind ? std::optional(kindNamed(*kind)) : std::nullopt,
                         {ignored.begin(), ignored.end()}};
    for (const std::string& rule : ignored) {
        require(findRule(rule).has_value(), "there is no rule " + rfu::quoted(rule));
    }
    py::list found;
    const std::string note = check(names, options, found);
    return {found, note.empty() ? std::vector<py::str>() : std::vector{textOf(note)}};
}

/// Name, severity, kinds of files, explanation, example and mend of each rule.
py::list rules() {
    py::list all;
    for (const KnownRule& known : knownRules()) {
        py::list kinds;
        for (const FileKind kind : known.kinds) {
            kinds.append(textOf(kindOf(kind).name));
        }
        all.append(py::make_tuple(textOf(known.rule.name), nameOf(known.rule.severity),
                                  py::tuple(kinds), known.rule.explanation, known.rule.example,
                                  known.rule.mend));
    }
    return all;
}

}  // namespace

void addChecks(py::module_& module) {
    module.def("findings", &findings);
    module.def("rules", &rules);
}

}  // namespace rfu::python
