#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include "analysis/plots/plotFrame.h"
#include "support/commandLine.h"
#include "support/subcommand.h"

namespace rfu::command {

// clang-format off
// For subcommands with an option --plot.
inline constexpr Option kPlotWidthOption = {
    "width", "PIXELS", Kind::Integer, "Of the whole plot, 480 to 10000.", "1280"};
inline constexpr Option kPlotHeightOption = {
    "height", "PIXELS", Kind::Integer, "Of the whole plot, 360 to 10000.", "680"};
inline constexpr Option kPlotLevelsOption = {
    "levels", "MIN:MAX", Kind::Range, "The levels at which the plot ends, in the shown unit."};
// clang-format on

struct PlotOptions {
    QString file;  // empty for none
    PlotShape shape;
};

/// --plot with --width, --height and, where the subcommand has it, --levels.
/// @param inputs files of the same run, which the plot must not replace
/// @throw UsageError, InputError
PlotOptions plotOptionsOf(const CommandLine& line, const QStringList& inputs);

/// --width and --height.
/// @throw UsageError beyond the sizes
QSize sizeOf(const CommandLine& line, QSize smallest, QSize largest);

}  // namespace rfu::command
