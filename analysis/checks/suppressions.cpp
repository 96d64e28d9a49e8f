#include "analysis/checks/suppressions.h"

#include <QDir>
#include <QFileInfo>
#include <string_view>
#include <utility>

#include "analysis/checks/rules.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"

namespace rfu {

RuleNames Suppressions::rulesIn(const QString& file) {
    RuleNames rules = everywhere_;
    const QFileInfo info(file);
    for (const Line& line : linesOf(info.path())) {
        if (line.files.isEmpty() || QDir::match(line.files, info.fileName())) {
            rules.insert(line.rule);
        }
    }
    return rules;
}

const std::vector<Suppressions::Line>& Suppressions::linesOf(const QString& folder) {
    const auto known = ofFolders_.find(folder);
    if (known != ofFolders_.end()) {
        return known->second;
    }
    std::vector<Line>& result = ofFolders_[folder];
    const QString file = QDir(folder).filePath(QStringLiteral(".rfutils-check"));
    if (!QFileInfo::exists(file)) {
        return result;
    }
    LineReader lines(file);
    std::string_view text;
    while (lines.next(text)) {
        QStringList words = QString::fromUtf8(text.data(), static_cast<int>(text.size()))
                                .simplified()
                                .split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words.isEmpty() || words[0].startsWith(QLatin1Char('#'))) {
            continue;
        }
        const std::string rule = words.takeFirst().toStdString();
        if (!findRule(rule)) {
            throw InputError(file, lines.number(), "there is no rule " + rfu::quoted(rule));
        }
        result.push_back({rule, words});
    }
    return result;
}

}  // namespace rfu
