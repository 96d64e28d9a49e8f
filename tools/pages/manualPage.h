#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rfu::pages {

enum class Style { Plain, Bold, Italic };

/// A piece of text in one style.
struct Span {
    std::string text;
    Style style = Style::Plain;
};
using Text = std::vector<Span>;

inline Text bold(std::string text) {
    return {{std::move(text), Style::Bold}};
}

/// "rfutils-convert(1)", set as references are.
Text reference(const std::string& page, char section);

/// Several texts as one.
Text joined(std::initializer_list<Text> texts);

/// A page in the language man(7), as groff and mandoc read it. Texts are UTF-8; the source is ASCII
/// in lines of at most 80 bytes.
class ManualPage {
public:
    /// @param name   in small letters
    /// @param date   "2026-11-21"
    /// @param origin what the page belongs to, with its version
    ManualPage(const std::string& name, char section, const std::string& date,
               const std::string& origin, const std::string& manual);

    void section(std::string_view title);
    void subsection(std::string_view title);
    void paragraph(const Text& text);
    /// A term, and what is said about it below.
    void item(const Text& term, const Text& text);
    void bullet(const Text& text, int depth = 1);
    /// Lines as they are.
    void literal(const std::vector<std::string>& lines);
    /// Of the same number of cells each, the heads of the columns first.
    void table(const std::vector<std::vector<Text>>& rows);

    std::string text() const { return text_; }

private:
    void beginParagraph();
    void add(const Text& text);
    void setDepth(int depth);

    std::string text_;
    int depth_ = 0;
};

}  // namespace rfu::pages
