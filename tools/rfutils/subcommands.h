#pragma once

#include <QStringList>

namespace rfu::command {

// One function per subcommand, each in the source file of its name. They get the arguments behind
// the subcommand's name, print to standardOutput() and throw a Failure when they cannot go on.
void runCatalogue(const QStringList& arguments);
void runConvert(const QStringList& arguments);
void runDd(const QStringList& arguments);
void runDms(const QStringList& arguments);
void runFreq(const QStringList& arguments);
void runRange(const QStringList& arguments);
void runRaster(const QStringList& arguments);
void runScale(const QStringList& arguments);
void runSetups(const QStringList& arguments);
void runTab(const QStringList& arguments);
void runTrace(const QStringList& arguments);
void runUnits(const QStringList& arguments);
void runWidth(const QStringList& arguments);

}  // namespace rfu::command
