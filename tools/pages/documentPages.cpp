#include "tools/pages/documentPages.h"

#include <QFileInfo>
#include <QTextBlock>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "subcommands.h"

namespace rfu::pages {

namespace {

/// The page that a document became.
struct DocumentPage {
    const char* document;
    const char* page;
    char section;
};

// clang-format off
constexpr DocumentPage kDocumentPages[] = {
    {"command.md", "rfutils",         '1'},
    {"viewer.md",  "rfutils-view",    '1'},
    {"formats.md", "rfutils-formats", '5'},
    {"library.md", "librfUtils",      '3'}};
// clang-format on

bool isSubcommand(const QString& name) {
    return std::any_of(std::begin(command::kSubcommands), std::end(command::kSubcommands),
                       [&](const command::Subcommand* subcommand) {
                           return name == QLatin1String(subcommand->name);
                       });
}

/// What a link shows: the page it leads to, or its text.
/// @param document that it stands in
Text linkText(const Span& span, const QUrl& target, const QString& document) {
    const QString path = target.path().isEmpty() ? document : target.path();
    for (const DocumentPage& known : kDocumentPages) {
        if (QFileInfo(path).fileName() == QLatin1String(known.document)) {
            // The parts of the command's document are named after its subcommands.
            if (isSubcommand(target.fragment())) {
                return reference(known.page + ("-" + target.fragment().toStdString()),
                                 known.section);
            }
            return path == document ? Text{span} : reference(known.page, known.section);
        }
    }
    return {span};
}

Style styleOf(const QTextCharFormat& format) {
    // Code alone has a font of its own.
    const bool isCode = format.fontFixedPitch() || format.hasProperty(QTextFormat::FontPointSize);
    return isCode || format.fontWeight() > QFont::Normal ? Style::Bold
           : format.fontItalic()                         ? Style::Italic
                                                         : Style::Plain;
}

Text textOf(const QTextBlock& block) {
    Text text;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        if (format.isImageFormat()) {
            continue;
        }
        const Span span{it.fragment().text().toStdString(), styleOf(format)};
        const Text shown =
            format.isAnchor() && !format.anchorHref().isEmpty()
                ? linkText(span, QUrl(format.anchorHref()),
                           block.document()->metaInformation(QTextDocument::DocumentUrl))
                : Text{span};
        text.insert(text.end(), shown.begin(), shown.end());
    }
    return text;
}

bool isCode(const QTextBlock& block) {
    return block.blockFormat().nonBreakableLines() ||
           block.blockFormat().hasProperty(QTextFormat::BlockCodeLanguage);
}

Text textOf(const QTextTableCell& cell) {
    Text text;
    for (auto it = cell.begin(); !it.atEnd(); ++it) {
        const Text block = textOf(it.currentBlock());
        text.insert(text.end(), block.begin(), block.end());
    }
    return text;
}

/// The blocks of a document one after the other.
class Writer {
public:
    /// What stands before the first section.
    enum class Introduction { Written, Skipped };

    /// @param begins whether a heading begins the part that is written; the headings one level below
    ///               it become sections
    Writer(ManualPage& page, std::function<bool(const QString& heading, int level)> begins,
           Introduction introduction = Introduction::Written)
        : page_(page),
          begins_(std::move(begins)),
          isSilent_(introduction == Introduction::Skipped) {}

    void write(const QTextFrame& frame) {
        for (auto it = frame.begin(); !it.atEnd(); ++it) {
            if (const auto* const table = qobject_cast<const QTextTable*>(it.currentFrame())) {
                flush();
                if (isWritten()) {
                    writeTable(*table);
                }
            } else if (it.currentBlock().isValid()) {
                writeBlock(it.currentBlock());
            }
        }
        flush();
    }

    bool hasPart() const { return level_ > 0; }

private:
    bool isWritten() const { return isInside_ && !isSilent_; }

    void writeBlock(const QTextBlock& block) {
        if (isWritten() && isCode(block)) {
            code_.push_back(block.text().toStdString());
            return;
        }
        flush();
        if (const int level = block.blockFormat().headingLevel(); level > 0) {
            writeHeading(block.text(), level);
        } else if (isWritten() && !block.text().trimmed().isEmpty()) {
            writeText(block);
        }
    }

    void writeHeading(const QString& title, int level) {
        isInside_ = isInside_ && level > level_;
        if (!hasPart() && begins_(title, level)) {
            isInside_ = true;
            level_ = level;
        } else if (isInside_ && level == level_ + 1) {
            isSilent_ = false;
            page_.section(title.toStdString());
        } else if (isInside_) {
            page_.subsection(title.toStdString());
        }
    }

    void writeText(const QTextBlock& block) {
        if (const QTextList* const list = block.textList()) {
            page_.bullet(textOf(block), list->format().indent());
        } else {
            page_.paragraph(textOf(block));
        }
    }

    /// Two columns are terms and what is said of them.
    void writeTable(const QTextTable& table) {
        std::vector<std::vector<Text>> rows;
        for (int row = 0; row < table.rows(); ++row) {
            std::vector<Text> cells;
            cells.reserve(static_cast<std::size_t>(table.columns()));
            for (int column = 0; column < table.columns(); ++column) {
                cells.push_back(textOf(table.cellAt(row, column)));
            }
            rows.push_back(std::move(cells));
        }
        if (table.columns() > 2) {
            page_.table(rows);
            return;
        }
        for (auto row = std::next(rows.begin()); row != rows.end(); ++row) {
            page_.item(row->front(), row->back());
        }
    }

    void flush() {
        if (!code_.empty()) {
            page_.literal(code_);
            code_.clear();
        }
    }

    ManualPage& page_;
    std::function<bool(const QString& heading, int level)> begins_;
    bool isSilent_;
    bool isInside_ = false;
    int level_ = 0;  // of the heading that began the part
    std::vector<std::string> code_;
};

}  // namespace

Document documentOf(const QString& file, const std::string& markdown) {
    auto document = std::make_unique<QTextDocument>();
    document->setMetaInformation(QTextDocument::DocumentUrl, QFileInfo(file).fileName());
    document->setMarkdown(QString::fromStdString(markdown));
    return document;
}

void addDocument(ManualPage& page, const QTextDocument& document) {
    Writer(page, [](const QString&, int level) { return level == 1; }).write(*document.rootFrame());
}

void addSections(ManualPage& page, const QTextDocument& document) {
    Writer(
        page, [](const QString&, int level) { return level == 1; }, Writer::Introduction::Skipped)
        .write(*document.rootFrame());
}

void addPart(ManualPage& page, const QTextDocument& document, const QString& heading) {
    Writer writer(page, [&](const QString& title, int) { return title == heading; });
    writer.write(*document.rootFrame());
    if (!writer.hasPart()) {
        throw std::runtime_error("there is no heading " + heading.toStdString());
    }
}

}  // namespace rfu::pages
