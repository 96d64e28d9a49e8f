#include <rfUtils/trace/traceRssiBuffer.h>

#include <QString>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Message {
    QtMsgType severity;
    std::string category;
    std::string text;
};

std::vector<Message> messages;

void record(QtMsgType severity, const QMessageLogContext& context, const QString& text) {
    messages.push_back({severity, context.category, text.toStdString()});
}

/// The messages that one call of info() writes.
std::vector<Message> reportOf(const traceRssiBuffer& buffer) {
    messages.clear();
    const QtMessageHandler previous = qInstallMessageHandler(record);
    buffer.info();
    qInstallMessageHandler(previous);
    return messages;
}

TEST(MarkerReport, HasOneCriticalMessagePerRingInIndexOrder) {
    traceRssiBuffer buffer(7, 100);
    for (int marker = 0; marker < 6; ++marker) {
        for (int value = 0; value < 5 + marker; ++value) {
            buffer.appendMarkerPower(marker, -30.0);
        }
    }
    const std::vector<Message> report = reportOf(buffer);
    const char* const kExpected[] = {
        "traceMarkerBuffer :::: 100 ,  5", "traceMarkerBuffer :::: 100 ,  6",
        "traceMarkerBuffer :::: 100 ,  7", "traceMarkerBuffer :::: 100 ,  8",
        "traceMarkerBuffer :::: 100 ,  9", "traceMarkerBuffer :::: 100 ,  10",
    };
    ASSERT_EQ(report.size(), std::size(kExpected));
    for (std::size_t ring = 0; ring < report.size(); ++ring) {
        EXPECT_EQ(report[ring].text, kExpected[ring]);
        EXPECT_EQ(report[ring].severity, QtCriticalMsg);
        EXPECT_EQ(report[ring].category, "default");
    }
}

TEST(MarkerReport, ShowsTheCapacityAndNotTheTraces) {
    traceRssiBuffer buffer(50, -4);
    std::vector<double> trace{1.0};
    buffer.push_back(trace);
    const std::vector<Message> report = reportOf(buffer);
    ASSERT_EQ(report.size(), 6U);
    for (const Message& message : report) {
        EXPECT_EQ(message.text, "traceMarkerBuffer :::: 0 ,  0");
    }
}

}  // namespace
