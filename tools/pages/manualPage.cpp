#include "tools/pages/manualPage.h"

#include <QString>
#include <QVector>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <initializer_list>

namespace rfu::pages {

namespace {

constexpr std::size_t kMaxBytes = 79;

bool isLetter(uint code) {
    return code < 0x80 && std::isalpha(static_cast<unsigned char>(code)) != 0;
}

/// What is no plain character in a source, or would be set as another one.
std::string escapedCharacter(uint code) {
    switch (code) {
        case '\\':
            return "\\e";
        case '-':
            return "\\-";
        case '\'':
            return "\\(aq";
        case '`':
            return "\\(ga";
        case '^':
            return "\\(ha";
        case '~':
            return "\\(ti";
        case '"':
            return "\\(dq";
        case 0xA0:
            return "\\~";
        default:
            break;
    }
    if (code < 0x80) {
        return std::string(1, static_cast<char>(code));
    }
    const QString number = QString::number(code, 16).toUpper();
    return "\\[u" + number.rightJustified(4, QLatin1Char('0')).toStdString() + "]";
}

/// A minus sign but between letters of a plain word, where it is a hyphen.
std::string escaped(std::string_view text, Style style = Style::Plain) {
    const QVector<uint> codes =
        QString::fromUtf8(text.data(), static_cast<int>(text.size())).toUcs4();
    std::string result;
    for (int i = 0; i < codes.size(); ++i) {
        const bool isHyphen = style == Style::Plain && codes[i] == '-' && i > 0 &&
                              i + 1 < codes.size() && isLetter(codes[i - 1]) &&
                              isLetter(codes[i + 1]);
        result += isHyphen ? "-" : escapedCharacter(codes[i]);
    }
    return result;
}

/// A line that begins like a request is text nevertheless.
std::string guarded(const std::string& line) {
    return !line.empty() && (line.front() == '.' || line.front() == '\'') ? "\\&" + line : line;
}

const char* fontOf(Style style) {
    return style == Style::Bold ? "\\fB" : style == Style::Italic ? "\\fI" : "\\fR";
}

/// The words of a text as a source has them; those of several styles without blanks between them
/// are one.
std::vector<std::string> wordsOf(const Text& text) {
    std::vector<std::string> words;
    bool isOpen = false;
    for (const Span& span : text) {
        std::string_view rest = span.text;
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find_first_of(" \n"), rest.size());
            if (end == 0) {
                isOpen = false;
                rest.remove_prefix(1);
                continue;
            }
            std::string word = escaped(rest.substr(0, end), span.style);
            if (span.style != Style::Plain) {
                word.insert(0, fontOf(span.style)).append("\\fR");
            }
            if (isOpen) {
                words.back() += word;
            } else {
                words.push_back(word);
            }
            isOpen = true;
            rest.remove_prefix(end);
        }
    }
    return words;
}

std::string oneLine(const Text& text) {
    std::string line;
    for (const std::string& word : wordsOf(text)) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

std::string upperCase(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<int>(text.size())).toUpper().toStdString();
}

}  // namespace

Text reference(const std::string& page, char section) {
    return {{page, Style::Bold}, {std::string("(") + section + ")"}};
}

Text joined(std::initializer_list<Text> texts) {
    Text all;
    for (const Text& text : texts) {
        all.insert(all.end(), text.begin(), text.end());
    }
    return all;
}

ManualPage::ManualPage(const std::string& name, char section, const std::string& date,
                       const std::string& origin, const std::string& manual) {
    text_ = "'\\\" t\n.TH \"" + escaped(upperCase(name), Style::Bold) + "\" " + section + " \"" +
            date + "\" \"" + escaped(origin) + "\" \"" + escaped(manual) + "\"\n";
}

void ManualPage::section(std::string_view title) {
    setDepth(0);
    text_ += ".SH " + escaped(upperCase(title)) + "\n";
}

void ManualPage::subsection(std::string_view title) {
    setDepth(0);
    text_ += ".SS " + escaped(title) + "\n";
}

void ManualPage::paragraph(const Text& text) {
    beginParagraph();
    add(text);
}

void ManualPage::item(const Text& term, const Text& text) {
    setDepth(0);
    text_ += ".TP\n" + guarded(oneLine(term)) + "\n";
    add(text);
}

void ManualPage::bullet(const Text& text, int depth) {
    setDepth(depth - 1);
    text_ += ".IP \\(bu 2\n";
    add(text);
}

void ManualPage::literal(const std::vector<std::string>& lines) {
    beginParagraph();
    text_ += ".RS 4\n.nf\n";
    const auto isEmpty = [](const std::string& line) { return line.empty(); };
    const auto end = std::find_if_not(lines.rbegin(), lines.rend(), isEmpty).base();
    for (auto line = lines.begin(); line != end; ++line) {
        text_ += guarded(escaped(*line, Style::Bold)) + "\n";
    }
    text_ += ".fi\n.RE\n";
}

void ManualPage::table(const std::vector<std::vector<Text>>& rows) {
    beginParagraph();
    const std::size_t columns = rows.front().size();
    text_ += ".ad l\n.TS\nallbox;\n";
    for (const char* style : {"b", ""}) {
        for (std::size_t column = 0; column < columns; ++column) {
            text_ += std::string(column == 0 ? "" : " ") + "l" + style +
                     (column + 1 == columns ? "x" : "");
        }
        text_ += *style == '\0' ? ".\n" : "\n";
    }
    for (const std::vector<Text>& row : rows) {
        for (const Text& cell : row) {
            text_ += &cell == &row.front() ? "T{\n" : "\tT{\n";
            add(cell);
            text_ += "T}";
        }
        text_ += "\n";
    }
    text_ += ".TE\n.ad b\n";
}

void ManualPage::beginParagraph() {
    setDepth(0);
    // After a heading it begins by itself.
    const std::size_t last = text_.rfind('\n', text_.size() - 2) + 1;
    if (text_.compare(last, 3, ".SH") != 0 && text_.compare(last, 3, ".SS") != 0) {
        text_ += ".PP\n";
    }
}

void ManualPage::add(const Text& text) {
    std::string line;
    for (const std::string& word : wordsOf(text)) {
        if (!line.empty() && line.size() + 1 + word.size() > kMaxBytes) {
            text_ += guarded(line) + "\n";
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty()) {
        text_ += guarded(line) + "\n";
    }
}

void ManualPage::setDepth(int depth) {
    for (; depth_ < depth; ++depth_) {
        text_ += ".RS 2\n";
    }
    for (; depth_ > depth; --depth_) {
        text_ += ".RE\n";
    }
}

}  // namespace rfu::pages
