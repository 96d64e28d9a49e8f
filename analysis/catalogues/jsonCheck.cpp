#include "analysis/catalogues/jsonCheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <algorithm>
#include <map>
#include <string_view>

#include "analysis/catalogues/jsonRules.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/plainText.h"
#include "analysis/support/words.h"

namespace rfu {

namespace {

constexpr char kRefused[] = "refused, nothing is loaded: ";
constexpr char kSchema[] = "$schema";

std::vector<std::int64_t> lineBeginnings(const QByteArray& bytes) {
    std::vector<std::int64_t> beginnings = {0};
    for (auto at = bytes.indexOf('\n'); at >= 0; at = bytes.indexOf('\n', at + 1)) {
        beginnings.push_back(at + 1);
    }
    return beginnings;
}

/// "a", "a and b", "a, b and c"
std::string listOf(const std::vector<std::string>& names) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list += i == 0 ? "" : i + 1 == names.size() ? " and " : ", ";
        list += names[i];
    }
    return list;
}

std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

/// A word that people write for a member.
struct MemberWord {
    const char* word;
    const char* member;
};

constexpr MemberWord kMemberWords[] = {
    {"code", "enum"},    {"value", "enum"},      {"name", "label"},    {"text", "label"},
    {"title", "label"},  {"key", "id"},          {"order", "dispSeq"}, {"sequence", "dispSeq"},
    {"sort", "dispSeq"}, {"position", "dispSeq"}};

/// The missing member for which a key is another word; -1 where there is none.
int meantByOtherWord(const QString& key, const std::vector<QString>& missing) {
    for (const MemberWord& other : kMemberWords) {
        const auto found = std::find(missing.begin(), missing.end(), QLatin1String(other.member));
        if (found != missing.end() &&
            key.compare(QLatin1String(other.word), Qt::CaseInsensitive) == 0) {
            return static_cast<int>(found - missing.begin());
        }
    }
    return -1;
}

/// "a text", "a number", ...
std::string nameOfKind(char first) {
    switch (first) {
        case '{':
            return "an object";
        case '[':
            return "a list";
        case '"':
            return "a text";
        case 't':
            return "true";
        case 'f':
            return "false";
        case 'n':
            return "null";
        default:
            return "a number";
    }
}

/// Whether a value begins an object or a list.
bool opens(char first) {
    return first == '{' || first == '[';
}

}  // namespace

JsonCheck::JsonCheck(const QString& file, RuleTable rules, const JsonFormat& format)
    : file_(file),
      format_(format),
      findings_(file, rules),
      watch_({file}),  // the library opens the name itself
      bytes_(readWhole(file)),
      lines_(lineBeginnings(bytes_)),
      places_(bytes_) {}

Findings JsonCheck::run(const std::function<bool(const QString& file)>& load) {
    const bool isLoaded = load(file_);
    watch_.requireUnchanged();
    if (!isLoaded) {
        reportRefusal();
    } else {
        walk();
    }
    findings_.sort();
    return std::move(findings_);
}

long long JsonCheck::lineOf(std::int64_t offset) const {
    return std::upper_bound(lines_.begin(), lines_.end(), offset) - lines_.begin();
}

void JsonCheck::report(const Rule& rule, std::int64_t offset, std::string text,
                       std::vector<Edit> mend) {
    const long long line = lineOf(offset);
    const std::int64_t beginning = lines_[static_cast<std::size_t>(line) - 1];
    findings_.add(rule.name, line, offset - beginning + 1, std::move(text), std::move(mend));
}

std::string_view JsonCheck::bytesAt(const JsonPlace& place) const {
    return {bytes_.constData() + place.begin, static_cast<std::size_t>(place.end - place.begin)};
}

std::string JsonCheck::shown(const JsonPlace& value) const {
    constexpr std::size_t kLongest = 40;
    const std::string_view bytes = bytesAt(value);
    const char first = bytes.front();
    if (opens(first)) {
        return nameOfKind(first);
    }
    if (first == '"') {
        return rfu::quoted(textAt(value).toStdString());
    }
    return std::string(bytes.substr(0, kLongest)) + (bytes.size() > kLongest ? "..." : "");
}

/// A value as the library's parser reads it.
QJsonValue JsonCheck::valueAt(const JsonPlace& place) const {
    const QByteArray inList =
        '[' + bytes_.mid(static_cast<int>(place.begin), static_cast<int>(place.end - place.begin)) +
        ']';
    return QJsonDocument::fromJson(inList).array().at(0);
}

/// A text as the library's parser reads it.
QString JsonCheck::textAt(const JsonPlace& place) const {
    const std::string_view bytes = bytesAt(place);
    const bool isPlain =
        std::all_of(bytes.begin(), bytes.end(), [](char c) { return c > 0 && c != '\\'; });
    if (isPlain) {
        return QString::fromLatin1(bytes.data() + 1, static_cast<int>(bytes.size()) - 2);
    }
    return valueAt(place).toString();
}

QString JsonCheck::keyAt(const JsonPlace& place) const {
    return (losesMark(place) ? QString(QChar::ByteOrderMark) : QString()) + textAt(place);
}

bool JsonCheck::losesMark(const JsonPlace& text) const {
    const std::string_view bytes = bytesAt(text);
    return bytes.substr(1, kMarkLength) == kUtf8Mark && bytes.find('\\') == std::string_view::npos;
}

void JsonCheck::reportRefusal() {
    if (bytes_.trimmed().isEmpty()) {
        findings_.add(kJsonSyntax.name, std::string(kRefused) + "the file is empty");
        return;
    }
    if (isEncoded()) {
        report(kJsonEncoding, 0,
               std::string(kRefused) + "this is UTF-16 or UTF-32; the library reads UTF-8");
        return;
    }
    QJsonParseError error;
    QJsonDocument::fromJson(bytes_, &error);
    const auto& fault = places_.fault();
    const bool isTextFault = error.error == QJsonParseError::IllegalUTF8String;
    const JsonPlace& document = places_.document();  // empty behind a byte-order mark alone
    if (fault && !(isTextFault && error.offset <= fault->offset)) {
        report(kJsonSyntax, fault->offset, kRefused + fault->text);
    } else if (!fault && !opens(bytesAt(document).front())) {
        report(kJsonSyntax, document.begin, kRefused + atTheTop(bytesAt(document).front()));
    } else {
        reportQtFault(error);
    }
}

/// Whether each character takes several bytes.
bool JsonCheck::isEncoded() {
    const bool hasMark = bytes_.startsWith("\xFF\xFE") || bytes_.startsWith("\xFE\xFF");
    return hasMark || bytes_.left(4).contains('\0');
}

/// Something that is JSON, and yet Qt refuses it.
void JsonCheck::reportQtFault(const QJsonParseError& error) {
    const auto offset = std::min<std::int64_t>(error.offset, bytes_.size());
    switch (error.error) {
        case QJsonParseError::IllegalUTF8String: {
            const QByteArray byte = bytes_.mid(error.offset, 1).toHex().toUpper();
            report(kJsonEncoding, offset,
                   kRefused + ("byte " + byte.toStdString()) +
                       " is no UTF-8, as where a file is saved in an 8-bit encoding");
            break;
        }
        case QJsonParseError::IllegalNumber: {
            std::int64_t begin = offset;
            while (begin > 0 && isOfNumbers(bytes_[static_cast<int>(begin - 1)])) {
                --begin;
            }
            report(kJsonSyntax, begin,
                   kRefused + shown({begin, offset}) +
                       " is too large, or too near to zero, for any number of the library");
            break;
        }
        case QJsonParseError::DeepNesting:
            report(kJsonSyntax, offset - 1,
                   std::string(kRefused) + "more than 1024 lists and objects in one another");
            break;
        default:  // the strict parser has found all else that Qt refuses
            findings_.add(kJsonSyntax.name, std::string(kRefused) +
                                                "the instrument's own JSON reader wants otherwise");
    }
}

void JsonCheck::reportOddities() {
    for (const JsonOddity& oddity : places_.oddities()) {
        report(kJsonOddity, oddity.place.begin,
               "read, though other programs refuse it: " + oddity.text,
               {{oddity.place.begin, oddity.place.end - oddity.place.begin, oddity.standard}});
    }
    if (viewOf(bytes_).substr(0, kUtf8Mark.size()) == kUtf8Mark) {
        report(kJsonByteOrderMark, 0,
               "a byte-order mark: the library skips it, other programs refuse the file",
               {{0, kMarkLength, ""}});
    }
}

void JsonCheck::walk() {
    reportOddities();
    if (places_.fault()) {  // nothing that the library's own parser accepts
        report(kJsonOddity, places_.fault()->offset,
               "read, though other programs refuse it: " + places_.fault()->text +
                   "; nothing behind this place is checked");
        return;
    }
    const JsonPlace& document = places_.document();
    if (bytesAt(document).front() != '{') {
        report(kJsonTopLevel, document.begin, "nothing is loaded: " + atTheTop('['));
        return;
    }
    const std::vector<TopMember> members = topMembers();
    std::map<QString, int> times;
    for (const TopMember& member : members) {
        ++times[member.key];
    }
    for (const TopMember& member : members) {
        if (member.replacedBy) {
            reportReplaced(member, members[*member.replacedBy]);
        } else {
            takeTopMember(member, times[member.key] == 1);
        }
    }
    finish();
    if (taken_ == 0) {
        report(kNothingLoaded, document.begin,
               std::string("loads no ") + format_.element + " at all");
    }
}

std::string JsonCheck::atTheTop(char first) const {
    return nameOfKind(first) + " at the top, where the library takes an object of " + format_.list +
           "s";
}

std::vector<std::pair<QString, JsonMember>> JsonCheck::membersOf(const JsonPlace& object) const {
    std::vector<std::pair<QString, JsonMember>> members;
    for (const JsonMember& member : places_.membersOf(object)) {
        members.emplace_back(keyAt(member.key), member);
    }
    return members;
}

std::vector<JsonCheck::TopMember> JsonCheck::topMembers() {
    std::vector<TopMember> members;
    std::map<QString, std::size_t> last;
    for (auto& [key, places] : membersOf(places_.document())) {
        const auto [known, isNew] = last.emplace(key, members.size());
        if (!isNew) {
            members[known->second].replacedBy = members.size();
            known->second = members.size();
        }
        const bool isArray = bytesAt(places.value).front() == '[';
        members.push_back({textAt(places.key), places,
                           isArray ? places_.elementsOf(places.value) : std::vector<JsonPlace>()});
    }
    return members;
}

void JsonCheck::reportReplaced(const TopMember& earlier, const TopMember& later) {
    const std::string key = rfu::quoted(earlier.key.toStdString());
    report(kMemberRepeated, later.places.key.begin,
           "replaces " + key + " of line " + std::to_string(lineOf(earlier.places.key.begin)) +
               (earlier.elements.empty()
                    ? std::string()
                    : " and its " + counted(earlier.elements.size(), format_.element)) +
               ": of members with the same key the last one counts");
    for (const JsonPlace& element : earlier.elements) {
        report(kElementReplaced, element.begin,
               "not loaded: line " + std::to_string(lineOf(later.places.key.begin)) + " has " +
                   key + " again");
    }
}

void JsonCheck::takeTopMember(const TopMember& member, bool isAlone) {
    const std::string key = rfu::quoted(member.key.toStdString());
    const char first = bytesAt(member.places.value).front();
    if (first != '[') {
        if (first != '"' || member.key != QLatin1String(kSchema)) {
            report(kListIgnored, member.places.key.begin,
                   key + " is ignored: " + nameOfKind(first) + ", where " + format_.list +
                       "s are lists of " + format_.element + "s in [ ]");
        }
        return;
    }
    const JsonList list = {member.key, member.places.key, member.elements.size(), isAlone};
    takeList(list);
    for (const JsonPlace& element : member.elements) {
        takeAny(list, element);
    }
}

std::string JsonCheck::membersText(const std::vector<QString>& names) const {
    std::vector<std::string> texts;
    texts.reserve(names.size());
    for (const QString& name : names) {
        texts.push_back(rfu::quoted(name.toStdString()));
    }
    return listOf(texts);
}

void JsonCheck::takeAny(const JsonList& list, const JsonPlace& place) {
    const std::string_view bytes = bytesAt(place);
    if (bytes.front() != '{') {
        report(kElementSkipped, place.begin,
               "skipped: " + nameOfKind(bytes.front()) + ", where a " + format_.element +
                   " is an object with " + membersText(format_.members));
        return;
    }
    const QJsonObject object =
        QJsonDocument::fromJson(
            QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())))
            .object();
    const auto members = membersOf(place);
    const MendedKeys mended = checkMembers(place, object, members);
    JsonElement element = {place, object, {}};
    for (const QString& name : format_.members) {
        const auto counts = std::find_if(members.rbegin(), members.rend(), [&](const auto& member) {
            const auto right = mended.find(member.first);
            return (right != mended.end() ? right->second : member.first) == name;
        });
        if (counts == members.rend()) {
            return;
        }
        if (!object.contains(name)) {
            element.object.insert(name, valueAt(counts->second.value));
        }
        element.values.push_back(counts->second.value);
    }
    checkValues(element);
    if (!mended.empty()) {  // the library skips it
        return;
    }
    ++taken_;
    takeElement(list, element);
}

JsonCheck::MendedKeys JsonCheck::checkMembers(
    const JsonPlace& place, const QJsonObject& object,
    const std::vector<std::pair<QString, JsonMember>>& members) {
    std::vector<QString> missing;
    for (const QString& name : format_.members) {
        if (!object.contains(name)) {
            missing.push_back(name);
        }
    }
    if (!missing.empty()) {
        report(kMemberMissing, place.begin,
               std::string("skipped: no member") + (missing.size() == 1 ? " " : "s ") +
                   membersText(missing));
    }
    std::vector<std::pair<QString, JsonMember>> unread;
    std::map<QString, JsonPlace> known;
    for (const auto& member : members) {
        if (!isMember(member.first)) {
            unread.push_back(member);
            continue;
        }
        const auto [earlier, isNew] = known.emplace(member.first, member.second.key);
        if (!isNew) {
            report(kMemberRepeated, member.second.key.begin,
                   "replaces " + rfu::quoted(member.first.toStdString()) + " of line " +
                       std::to_string(lineOf(earlier->second.begin)) +
                       ": of members with the same key the last one counts");
            earlier->second = member.second.key;
        }
    }
    return reportUnread(missing, unread);
}

JsonCheck::MendedKeys JsonCheck::reportUnread(
    const std::vector<QString>& missing,
    const std::vector<std::pair<QString, JsonMember>>& unread) {
    std::map<int, int> times;  // how often each missing member is meant
    for (const auto& member : unread) {
        ++times[nearMiss(textAt(member.second.key), missing)];
    }
    MendedKeys mended;
    for (const auto& [name, places] : unread) {
        const QString text = textAt(places.key);
        const std::string key = rfu::quoted(text.toStdString());
        const int near = nearMiss(text, missing);
        const bool isSure = near >= 0 && times[near] == 1;
        const bool isRight = near >= 0 && text == missing[static_cast<std::size_t>(near)];
        if (isSure) {
            mended.emplace(name, missing[static_cast<std::size_t>(near)]);
        }
        if (losesMark(places.key) && (isRight || near < 0)) {
            reportMarkOf(places.key, isRight ? isSure : !isMember(text));
            continue;
        }
        const int meant = near >= 0 ? near : meantByOtherWord(text, missing);
        if (meant < 0) {
            report(kMemberUnknown, places.key.begin, key + " is not read");
            continue;
        }
        const std::string known = missing[static_cast<std::size_t>(meant)].toStdString();
        std::vector<Edit> mend;
        if (isSure) {
            mend.push_back(
                {places.key.begin, places.key.end - places.key.begin, '"' + known + '"'});
        }
        report(kMemberMisspelt, places.key.begin,
               key + " is not read; did you mean " + rfu::quoted(known) + "?", std::move(mend));
    }
    return mended;
}

void JsonCheck::reportMarkOf(const JsonPlace& key, bool isSure) {
    report(kTextMarkDropped, key.begin + 1,
           rfu::quoted(textAt(key).toStdString()) +
               " is not read: an invisible byte-order mark stands in front of the key",
           isSure ? std::vector<Edit>{{key.begin + 1, kMarkLength, ""}} : std::vector<Edit>());
}

bool JsonCheck::isMember(const QString& key) const {
    return std::find(format_.members.begin(), format_.members.end(), key) != format_.members.end();
}

void JsonCheck::checkText(const JsonElement& element, std::size_t member) {
    const JsonPlace& place = element.values[member];
    const char first = bytesAt(place).front();
    if (first != '"') {
        report(kTextNotRead, place.begin,
               "the " + format_.members[member].toStdString() +
                   " is read as an empty text: " + shown(place) + " is no text in quotes");
    } else if (losesMark(place)) {
        report(kTextMarkDropped, place.begin + 1,
               "the " + format_.members[member].toStdString() +
                   " loses the invisible byte-order mark at its beginning",
               {{place.begin + 1, kMarkLength, ""}});
    }
}

}  // namespace rfu
