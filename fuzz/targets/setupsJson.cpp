// ResultSetup::loadJson. Holds for any bytes, and for JSON made from bytes:
// - the load succeeds exactly where Qt's parser takes them;
// - the list then holds the setups that a plain walk over the document finds, behind those it held,
//   and after a refused load those it held; outside the list are null texts;
// - the message log gets the lines that the walk foretells, at debug severity.
#include "support/jsonText.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include <rfUtils/catalogues/ResultSetup.h>
#include <tests/support/messageLog.h>

#include <QDebug>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <vector>

using namespace rfu::fuzz;

namespace {

struct Expectation {
    bool loads = false;
    std::vector<ResultSetup::SetupInfo> setups;
    std::vector<std::string> lines;

    void log(const char* before, const QString& text) {
        QString line;
        QDebug(&line).nospace() << before << text;
        lines.push_back(line.toStdString());
    }

    void addGroup(const QString& key, const QJsonArray& elements) {
        QString last = key;
        for (int i = 0; i < elements.size(); ++i) {
            const QJsonObject object = elements.at(i).toObject();
            if (!object.contains(QLatin1String("label"))) {
                log("Not found property at json.[label] ->  ", last);
            } else if (!object.contains(QLatin1String("id"))) {
                log("Not found property at json.[id] ->  ", last);
            } else {
                last = object[QLatin1String("id")].toString();
                setups.push_back({last, object[QLatin1String("label")].toString()});
            }
        }
    }

    void read(const QByteArray& bytes) {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
        loads = error.error == QJsonParseError::NoError;
        if (!loads) {
            log("", error.errorString());
        }
        const QJsonObject groups = document.object();
        // By place, not by key: Qt gives a key that begins with a byte-order mark without the mark,
        // and then finds nothing under it.
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            log("", group.key());
            const QJsonValue value = group.value();
            if (value.isArray()) {
                addGroup(group.key(), value.toArray());
            } else if (!value.isObject()) {
                log("", value.toString());
            }
        }
    }
};

void requireSetups(const ResultSetup& list, const Expectation& expected, int times) {
    int index = 0;
    for (int i = 0; i < times; ++i) {
        for (const ResultSetup::SetupInfo& setup : expected.setups) {
            REQUIRE(list.setupId(index) == setup.id);
            REQUIRE(list.setupLabel(index) == setup.label);
            ++index;
        }
    }
    for (const int outside : {index, -1, INT_MAX, INT_MIN}) {
        REQUIRE(list.setupId(outside).isNull() && list.setupLabel(outside).isNull());
    }
}

void requireLines(const std::vector<LoggedMessage>& messages, const Expectation& expected) {
    REQUIRE(std::equal(messages.begin(), messages.end(), expected.lines.begin(),
                       expected.lines.end(),
                       [](const LoggedMessage& message, const std::string& text) {
                           return message.severity == QtDebugMsg && message.text == text;
                       }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("setups.json");
    const std::string text = jsonTextOf(data, size);
    file.write(text.data(), text.size());
    Expectation expected;
    expected.read(QByteArray::fromStdString(text));

    const MessageLog log;
    ResultSetup list;
    for (int times = 1; times <= 2; ++times) {
        REQUIRE(list.loadJson(file.path()) == expected.loads);
        requireSetups(list, expected, times);
        requireLines(MessageLog::take(), expected);
    }
    return 0;
}
