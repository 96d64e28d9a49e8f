// ResultSetup::loadJson on any bytes, and on JSON made from bytes, against a walk over QJsonDocument:
// - the load succeeds if and only if Qt parses the bytes;
// - the list holds the setups that the walk finds, appended to those it held, and null strings
//   outside; a refused load leaves it unchanged;
// - the message log holds the lines of the walk, at debug severity.
#include <rfUtils/catalogues/ResultSetup.h>
#include <tests/support/messageLog.h>

#include <QByteArray>
#include <QDebug>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/jsonText.h"
#include "support/require.h"
#include "support/scratchFile.h"

using namespace rfu::fuzz;

namespace {

class Walk {
public:
    explicit Walk(const std::string& bytes) {
        QJsonParseError error;
        const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(bytes), &error);
        loads = error.error == QJsonParseError::NoError;
        if (!loads) {
            log("", error.errorString());
        }
        const QJsonObject groups = document.object();
        // By iterator: Qt strips a leading byte order mark from a key and then does not find it.
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

    bool loads = false;
    std::vector<ResultSetup::SetupInfo> setups;
    std::vector<std::string> lines;

private:
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
};

void requireSetups(const ResultSetup& list, const Walk& expected, int times) {
    int index = 0;
    for (int i = 0; i < times; ++i) {
        for (const ResultSetup::SetupInfo& setup : expected.setups) {
            REQUIRE(list.setupId(index) == setup.id);
            REQUIRE(list.setupLabel(index) == setup.label);
            ++index;
        }
    }
    using Limits = std::numeric_limits<int>;
    for (const int outside : {index, -1, Limits::max(), Limits::min()}) {
        REQUIRE(list.setupId(outside).isNull() && list.setupLabel(outside).isNull());
    }
}

bool isDebugLine(const LoggedMessage& message, const std::string& text) {
    return message.severity == QtDebugMsg && message.text == text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("setups.json");
    const std::string text = jsonTextOf(data, size);
    file.write(text.data(), text.size());
    const Walk expected(text);

    const MessageLog log;
    ResultSetup list;
    for (int times = 1; times <= 2; ++times) {
        REQUIRE(list.loadJson(file.path()) == expected.loads);
        requireSetups(list, expected, times);
        const std::vector<LoggedMessage> messages = MessageLog::take();
        REQUIRE(std::equal(messages.begin(), messages.end(), expected.lines.begin(),
                           expected.lines.end(), isDebugLine));
    }
    return 0;
}
