#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/catalogues/jsonPlaces.h"
#include "analysis/support/fileWatch.h"
#include "analysis/support/finding.h"

namespace rfu {

/// What files of a format hold: lists at the top, objects in them.
struct JsonFormat {
    const char* list;              ///< what a list is called, "item"
    const char* element;           ///< what an object in it is called, "choice"
    std::vector<QString> members;  ///< that an object must have
};

/// A list that the library reads.
struct JsonList {
    QString key;
    JsonPlace place;  ///< of the key
    std::size_t elements;
    bool isAlone;  ///< whether no other list has its key, marks in front of keys left out
};

/// An object of a list that the library reads.
struct JsonElement {
    JsonPlace place;
    QJsonObject object;             ///< as the library reads it
    std::vector<JsonPlace> values;  ///< of the members, in the order of JsonFormat
};

/// Walks over the lists of a file and reports what the library refuses, skips and alters. What a format's own
/// rules are about is left to the classes derived from it.
class JsonCheck {
public:
    /// @throw InputError where the file cannot be read
    JsonCheck(const QString& file, RuleTable rules, const JsonFormat& format);
    virtual ~JsonCheck() = default;
    JsonCheck(const JsonCheck&) = delete;
    JsonCheck& operator=(const JsonCheck&) = delete;

    /// @param load makes the library's class load the file; false where it fails
    /// @throw InputError where the file changes meanwhile
    Findings run(const std::function<bool(const QString& file)>& load);

protected:
    /// Called for each list that counts, in the order of the file, before its elements.
    virtual void takeList(const JsonList& list) = 0;
    /// Called for each object that has all members, and for one that has them once misspelt keys are mended: a mended file
    /// needs no second mend.
    virtual void checkValues(const JsonElement& element) = 0;
    /// Called for each object that has all members, behind checkValues().
    virtual void takeElement(const JsonList& list, const JsonElement& element) = 0;
    /// Called behind all lists.
    virtual void finish() = 0;

    void report(const Rule& rule, std::int64_t offset, std::string text,
                std::vector<Edit> mend = {});
    /// Reports a member that is no text or loses its beginning.
    /// @param member its index in JsonFormat
    void checkText(const JsonElement& element, std::size_t member);

    /// Whether a text or key begins with a byte-order mark that Qt drops: it keeps one in texts with escapes.
    bool losesMark(const JsonPlace& text) const;
    static constexpr std::int64_t kMarkLength = 3;

    long long lineOf(std::int64_t offset) const;
    std::string_view bytesAt(const JsonPlace& place) const;
    /// A number, text or other value for a message.
    std::string shown(const JsonPlace& value) const;

private:
    struct TopMember {
        QString key;
        JsonMember places;
        std::vector<JsonPlace> elements;  ///< of an array
        std::optional<std::size_t> replacedBy = {};
    };

    /// Right keys by those that a mend spells so.
    using MendedKeys = std::map<QString, QString>;

    QJsonValue valueAt(const JsonPlace& place) const;
    QString textAt(const JsonPlace& place) const;
    /// A key as Qt compares it: with the mark that the text of the key loses.
    QString keyAt(const JsonPlace& place) const;
    std::vector<std::pair<QString, JsonMember>> membersOf(const JsonPlace& object) const;

    void reportRefusal();
    void reportQtFault(const QJsonParseError& error);
    bool isEncoded();
    void reportOddities();

    void walk();
    std::string atTheTop(char first) const;
    std::vector<TopMember> topMembers();
    void reportReplaced(const TopMember& earlier, const TopMember& later);
    void takeTopMember(const TopMember& member, bool isAlone);
    void takeAny(const JsonList& list, const JsonPlace& place);
    MendedKeys checkMembers(const JsonPlace& place, const QJsonObject& object,
                            const std::vector<std::pair<QString, JsonMember>>& members);
    MendedKeys reportUnread(const std::vector<QString>& missing,
                            const std::vector<std::pair<QString, JsonMember>>& unread);
    /// @param isSure whether the mark can go
    void reportMarkOf(const JsonPlace& key, bool isSure);
    bool isMember(const QString& key) const;
    std::string membersText(const std::vector<QString>& names) const;

    QString file_;
    JsonFormat format_;
    Findings findings_;
    FileWatch watch_;
    QByteArray bytes_;
    std::vector<std::int64_t> lines_;  // where they begin
    JsonPlaces places_;
    std::size_t taken_ = 0;
};

}  // namespace rfu
