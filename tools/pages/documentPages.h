#pragma once

#include <QString>
#include <QTextDocument>

#include <memory>
#include <string>

#include "tools/pages/manualPage.h"

namespace rfu::pages {

/// A document in Markdown.
using Document = std::unique_ptr<QTextDocument>;

/// @param file     by whose name other documents lead to it
/// @param markdown with the tables of GitHub
Document documentOf(const QString& file, const std::string& markdown);

/// Writes a document without its title; its headings of the second level become sections.
void addDocument(ManualPage& page, const QTextDocument& document);

/// The same without what stands before the first section.
void addSections(ManualPage& page, const QTextDocument& document);

/// Writes what stands below a heading; the headings below it become sections.
/// @throw std::runtime_error where there is no such heading
void addPart(ManualPage& page, const QTextDocument& document, const QString& heading);

}  // namespace rfu::pages
