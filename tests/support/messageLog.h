#pragma once

#include <QString>
#include <QtGlobal>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// A line of Qt's message log.
struct LoggedMessage {
    QtMsgType severity;
    std::string text;      // UTF-8
    std::string category;  // "default" unless the caller chose one

    friend bool operator==(const LoggedMessage& a, const LoggedMessage& b) {
        return a.severity == b.severity && a.text == b.text && a.category == b.category;
    }
    friend std::ostream& operator<<(std::ostream& out, const LoggedMessage& message) {
        return out << message.category << ", severity " << message.severity << ": " << message.text;
    }
};

/// Collects Qt's log messages during its lifetime. One object at a time.
class MessageLog {
public:
    MessageLog() : before_(qInstallMessageHandler(collect)) { lines().clear(); }
    ~MessageLog() { qInstallMessageHandler(before_); }
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    /// The messages since the last call.
    static std::vector<LoggedMessage> take() { return std::exchange(lines(), {}); }

private:
    static std::vector<LoggedMessage>& lines() {
        static std::vector<LoggedMessage> collected;
        return collected;
    }
    static void collect(QtMsgType severity, const QMessageLogContext& context,
                        const QString& text) {
        lines().push_back({severity, text.toStdString(), context.category});
    }

    QtMessageHandler before_;
};
