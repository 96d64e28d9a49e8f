#pragma once

#include <QStringList>

// One function per subcommand, each in the source file of its name. They get the arguments behind
// the subcommand's name, print to standardOutput() and throw a Failure when they cannot go on.
void runCatalogue(const QStringList& arguments);
void runSetups(const QStringList& arguments);
