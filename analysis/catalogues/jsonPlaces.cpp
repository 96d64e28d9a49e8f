#include "analysis/catalogues/jsonPlaces.h"

// The reader's stack adds to a null pointer before its first element is there. That harms nobody, but UBSan of clang
// reports it.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((no_sanitize("pointer-overflow"))), apply_to = function)
#endif
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#if defined(__clang__)
#pragma clang attribute pop
#endif

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include "analysis/support/files.h"
#include "analysis/support/plainText.h"

namespace rfu {

namespace {

using namespace std::string_view_literals;

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ';
}

/// Takes the parts of the outermost object or array, not what they are made of.
class PartsHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, PartsHandler> {
public:
    /// @param bytes that the stream reads
    PartsHandler(std::string_view bytes, const rapidjson::MemoryStream& stream)
        : bytes_(bytes), stream_(stream) {}

    bool Default() { return takeScalar(); }
    bool Key(const char*, rapidjson::SizeType, bool) {
        if (depth_ == 1) {
            members.push_back({tokenThatEnds(), {}});
        }
        return true;
    }
    bool StartObject() { return open(); }
    bool StartArray() { return open(); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool EndArray(rapidjson::SizeType) { return close(); }

    std::vector<JsonMember> members;  ///< of an array with empty keys

private:
    /// Behind the token of a scalar or key, but on a bracket.
    std::int64_t position() const { return static_cast<std::int64_t>(stream_.Tell()); }

    /// The token that the stream has just left, the first one behind the part before it.
    JsonPlace tokenThatEnds() {
        std::int64_t begin = lastEnd_;
        while (isBlank(at(begin)) || at(begin) == ',' || at(begin) == ':') {
            ++begin;
        }
        lastEnd_ = position();
        return {begin, lastEnd_};
    }

    char at(std::int64_t offset) const { return bytes_[static_cast<std::size_t>(offset)]; }

    bool takeScalar() {
        if (depth_ == 1) {
            put(tokenThatEnds());
        }
        return true;
    }

    bool open() {
        if (depth_ == 1) {
            begin_ = position();
        }
        ++depth_;
        lastEnd_ = position() + 1;
        return true;
    }

    bool close() {
        --depth_;
        lastEnd_ = position() + 1;
        if (depth_ == 1) {
            put({begin_, lastEnd_});
        }
        return true;
    }

    void put(const JsonPlace& value) {
        if (!members.empty() && members.back().value.end == 0) {
            members.back().value = value;
        } else {
            members.push_back({{0, 0}, value});
        }
    }

    std::string_view bytes_;
    const rapidjson::MemoryStream& stream_;
    int depth_ = 0;
    std::int64_t lastEnd_ = 0;
    std::int64_t begin_ = 0;
};

std::vector<JsonMember> partsOf(const QByteArray& bytes, const JsonPlace& place) {
    const std::string_view text = viewOf(bytes).substr(
        static_cast<std::size_t>(place.begin), static_cast<std::size_t>(place.end - place.begin));
    rapidjson::MemoryStream stream(text.data(), text.size());
    PartsHandler handler(text, stream);
    rapidjson::Reader reader;
    reader.Parse<rapidjson::kParseIterativeFlag>(stream, handler);
    for (JsonMember& member : handler.members) {
        for (std::int64_t* const offset :
             {&member.key.begin, &member.key.end, &member.value.begin, &member.value.end}) {
            *offset += place.begin;
        }
    }
    return std::move(handler.members);
}

/// Finds what Qt reads though it is no JSON, and puts something of the same length in its place. Numbers and
/// escapes that JSON knows are replaced too: which of them fit a double or make a character is the library's
/// parser's affair.
class Standardiser {
public:
    Standardiser(QByteArray& bytes, std::vector<JsonOddity>& oddities)
        : oddities_(oddities), data_(bytes.data()), size_(bytes.size()) {}

    void run() {
        while (at_ < size_) {
            if (here() == '"') {
                takeText();
            } else if (isDigit(here()) || here() == '-' || here() == '.') {
                takeNumber();
            } else {
                ++at_;
            }
        }
    }

private:
    char here() const { return charAt(at_); }
    char charAt(std::int64_t at) const { return at < size_ ? data_[at] : '\0'; }

    void takeText() {
        for (++at_; at_ < size_ && here() != '"'; ++at_) {
            if (here() == '\\' && at_ + 1 < size_) {
                takeEscape();
            } else if (isControl(here())) {
                replaceControl({at_, at_ + 1}, here());
            }
        }
        ++at_;
    }

    /// Ends on the last byte that it takes.
    void takeEscape() {
        static constexpr std::string_view kKnown = "\"\\/bfnrt"sv;
        const JsonPlace escape{at_, at_ + 2};
        const char escaped = charAt(at_ + 1);
        if (escaped == 'u') {
            if (isCode(at_ + 2)) {
                std::fill(data_ + escape.begin, data_ + escape.end, ' ');
            }
        } else if (isControl(escaped)) {
            replaceControl(escape, escaped);
        } else if (kKnown.find(escaped) == std::string_view::npos) {
            const std::string character(1, escaped);
            replace(escape, "\\" + character + " in a text, which JSON writes as " + character,
                    character);
        }
        ++at_;
    }

    bool isCode(std::int64_t at) const {
        constexpr std::int64_t kDigits = 4;
        return at + kDigits <= size_ &&
               std::all_of(data_ + at, data_ + at + kDigits,
                           [](unsigned char c) { return std::isxdigit(c) != 0; });
    }

    void replaceControl(const JsonPlace& place, char control) {
        static constexpr std::string_view kShort[] = {"\bb"sv, "\ff"sv, "\nn"sv, "\rr"sv, "\tt"sv};
        std::string standard = "\\u00" + QByteArray(1, control).toHex().toStdString();
        for (const std::string_view known : kShort) {
            if (known[0] == control) {
                standard = std::string("\\") + known[1];
            }
        }
        const char* const what = control == '\t'   ? "a tab"
                                 : control == '\n' ? "a line end"
                                                   : "a control character";
        replace(place, what + (" in a text, which JSON writes as " + standard), standard);
    }

    void replace(const JsonPlace& place, std::string text, std::string standard) {
        oddities_.push_back({place, std::move(text), std::move(standard)});
        std::fill(data_ + place.begin, data_ + place.end, ' ');
    }

    std::int64_t digitsFrom(std::int64_t at) const {
        std::int64_t end = at;
        while (isDigit(charAt(end))) {
            ++end;
        }
        return end - at;
    }

    /// A number as Qt reads it, with or without digits on either side of the point. What only begins with one stays as it
    /// is: two that touch would be one number once they are filled.
    void takeNumber() {
        const std::int64_t begin = at_;
        at_ += charAt(at_) == '-' ? 1 : 0;
        const std::int64_t whole = charAt(at_) == '0' ? 1 : digitsFrom(at_);
        at_ += whole;
        const std::int64_t point = at_;
        const bool hasPoint = charAt(at_) == '.';
        const std::int64_t decimals = hasPoint ? digitsFrom(at_ + 1) : 0;
        at_ += hasPoint ? 1 + decimals : 0;
        bool isNumber = whole + decimals > 0;
        const bool hasExponent = isNumber && (charAt(at_) == 'e' || charAt(at_) == 'E');
        if (hasExponent) {
            at_ += charAt(at_ + 1) == '+' || charAt(at_ + 1) == '-' ? 2 : 1;
            const std::int64_t digits = digitsFrom(at_);
            at_ += digits;
            isNumber = digits > 0;
        }
        if (!isNumber || isOfNumbers(here())) {
            while (isOfNumbers(here())) {
                ++at_;
            }
            return;
        }
        if (hasPoint && (whole == 0 || decimals == 0)) {
            reportNumber({begin, at_}, point - begin, whole == 0);
        }
        fillNumber({begin, at_});
    }

    void reportNumber(const JsonPlace& place, std::int64_t point, bool lacksWhole) {
        const std::string number(data_ + place.begin, data_ + place.end);
        std::string standard = number;
        standard.insert(static_cast<std::size_t>(lacksWhole ? point : point + 1), 1, '0');
        oddities_.push_back({place, number + ", which JSON writes as " + standard, standard});
    }

    /// Puts a number that fits a double in the place of another.
    void fillNumber(const JsonPlace& place) {
        const std::int64_t first = place.begin + (data_[place.begin] == '-' ? 1 : 0);
        std::fill(data_ + first, data_ + place.end, '1');
        if (place.end - first > 2) {
            data_[first + 1] = '.';
        }
    }

    std::vector<JsonOddity>& oddities_;
    char* const data_;
    const std::int64_t size_;
    std::int64_t at_ = 0;
};

constexpr const char* kTooEarly = "the file ends before its last bracket";

bool startsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

/// What people write into JSON that is none.
struct Mistake {
    std::string_view beginning;
    const char* text;
};

constexpr Mistake kMistakes[] = {
    {"'", "texts stand in double quotes"},
    {"\xE2\x80\x9C", "a typographic quotation mark; texts stand in plain double quotes"},
    {"\xE2\x80\x9D", "a typographic quotation mark; texts stand in plain double quotes"},
    {"\xE2\x80\x9E", "a typographic quotation mark; texts stand in plain double quotes"},
    {"//", "JSON has no comments"},
    {"/*", "JSON has no comments"},
    {"#", "JSON has no comments"},
    {"+", "a number has no plus sign in front"},
    {"NaN", "JSON has no NaN"},
    {"nan", "JSON has no NaN"},
    {"Infinity", "JSON has no infinity"},
    {"inf", "JSON has no infinity"},
    {"True", "true stands in lower case"},
    {"TRUE", "true stands in lower case"},
    {"False", "false stands in lower case"},
    {"FALSE", "false stands in lower case"},
    {"None", "None is null in JSON"},
    {"NULL", "null stands in lower case"},
    {"Null", "null stands in lower case"},
    {"\xC2\xA0", "a blank that does not break lines (U+00A0), where JSON takes plain ones"},
    {"=", "a colon stands between a key and its value"},
    {";", "commas separate"},
};

/// What is wrong where a strict parser stops.
class FaultTexts {
public:
    explicit FaultTexts(std::string_view bytes) : bytes_(bytes) {}

    JsonFault at(std::size_t offset, rapidjson::ParseErrorCode code) const {
        const std::string_view rest = bytes_.substr(std::min(offset, bytes_.size()));
        const auto place = static_cast<std::int64_t>(offset);
        for (const Mistake& mistake : kMistakes) {
            if (startsWith(rest, mistake.beginning)) {
                return {place, mistake.text};
            }
        }
        const std::size_t last = lastBefore(offset);
        const char before = last == std::string_view::npos ? '\0' : bytes_[last];
        if (before == ',' && !rest.empty() && (rest[0] == '}' || rest[0] == ']')) {
            return {static_cast<std::int64_t>(last), "nothing stands behind the comma"};
        }
        if (rest.empty() && code != rapidjson::kParseErrorStringMissQuotationMark) {
            return {place, kTooEarly};
        }
        if (isDigit(before) && last + 1 == offset && isDigit(rest[0])) {
            return {place, "a number does not begin with 0"};
        }
        return {place, textOf(code)};
    }

private:
    /// The place of what stands in front of blanks.
    std::size_t lastBefore(std::size_t offset) const {
        while (offset > 0 && isBlank(bytes_[offset - 1])) {
            --offset;
        }
        return offset - 1;
    }

    static std::string textOf(rapidjson::ParseErrorCode code) {
        using namespace rapidjson;
        switch (code) {
            case kParseErrorDocumentRootNotSingular:
                return "more stands behind the end of the document";
            case kParseErrorObjectMissName:
                return "a key in double quotes is missing here";
            case kParseErrorObjectMissColon:
                return "a colon is missing behind the key";
            case kParseErrorObjectMissCommaOrCurlyBracket:
                return "a comma or } is missing here";
            case kParseErrorArrayMissCommaOrSquareBracket:
                return "a comma or ] is missing here";
            case kParseErrorStringUnicodeEscapeInvalidHex:
                return "four hexadecimal digits stand behind \\u";
            case kParseErrorStringMissQuotationMark:
                return "the quote that ends the last text is missing";
            case kParseErrorNumberMissFraction:
            case kParseErrorNumberMissExponent:
                return "a digit is missing in the number";
            default:
                return "here is no value: a text in double quotes, a number, true, false, null, a "
                       "list or an object";
        }
    }

    std::string_view bytes_;
};

}  // namespace

bool isOfNumbers(char c) {
    return isDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

JsonPlaces::JsonPlaces(const QByteArray& bytes) : standard_(bytes) {
    Standardiser(standard_, oddities_).run();
    const std::string_view text = viewOf(standard_);
    std::size_t begin = startsWith(text, kUtf8Mark) ? kUtf8Mark.size() : 0;
    while (begin < text.size() && isBlank(text[begin])) {
        ++begin;
    }
    document_ = {static_cast<std::int64_t>(begin), bytes.size()};
    rapidjson::MemoryStream stream(text.data() + begin, text.size() - begin);
    rapidjson::BaseReaderHandler<> nobody;
    rapidjson::Reader reader;
    const rapidjson::ParseResult result =
        reader.Parse<rapidjson::kParseIterativeFlag>(stream, nobody);
    if (result.IsError()) {
        fault_ = FaultTexts(viewOf(bytes)).at(begin + result.Offset(), result.Code());
        takeOpenText(viewOf(bytes));
    }
}

void JsonPlaces::takeOpenText(std::string_view bytes) {
    const auto behind = std::find_if(
        oddities_.begin(), oddities_.end(),
        [this](const JsonOddity& oddity) { return oddity.place.begin >= fault_->offset; });
    if (behind == oddities_.begin()) {
        return;
    }
    const std::int64_t last = std::prev(behind)->place.begin;
    if (bytes[static_cast<std::size_t>(last)] == '\n') {
        fault_ = {last, "a text is open at the end of the line: a quote is missing"};
    }
}

std::vector<JsonMember> JsonPlaces::membersOf(const JsonPlace& object) const {
    return partsOf(standard_, object);
}

std::vector<JsonPlace> JsonPlaces::elementsOf(const JsonPlace& array) const {
    std::vector<JsonPlace> elements;
    for (const JsonMember& part : partsOf(standard_, array)) {
        elements.push_back(part.value);
    }
    return elements;
}

}  // namespace rfu
