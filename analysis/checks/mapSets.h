#pragma once

#include <QString>
#include <QStringList>

#include "analysis/support/finding.h"

namespace rfu {

// The checks of map files with what belongs to them: grids have cells, headers and colour tables in files beside them,
// georeferences name a raster. Each throws an InputError where the file itself cannot be read.

RuleTable ascSetRules();
RuleTable hdrSetRules();
RuleTable bilSetRules();
RuleTable clrSetRules();
RuleTable tabSetRules();

Findings checkAscSet(const QString& file);
Findings checkHdrSet(const QString& file);
Findings checkBilSet(const QString& file);
Findings checkClrSet(const QString& file);
Findings checkTabSet(const QString& file);

/// The files of a grid, which need not exist: cells, header, colours.
QStringList filesOfGrid(const QString& file);
/// Those of the grid that a georeference names.
QStringList filesOfTab(const QString& file);

}  // namespace rfu
