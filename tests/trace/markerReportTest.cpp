#include <rfUtils/trace/traceRssiBuffer.h>
#include <support/messageLog.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<LoggedMessage> reportOf(const traceRssiBuffer& buffer) {
    const MessageLog log;
    buffer.info();
    return MessageLog::take();
}

TEST(MarkerReport, HasOneCriticalMessagePerRingInIndexOrder) {
    traceRssiBuffer buffer(7, 100);
    for (int marker = 0; marker < 6; ++marker) {
        for (int value = 0; value < 5 + marker; ++value) {
            buffer.appendMarkerPower(marker, -30.0);
        }
    }
    EXPECT_EQ(reportOf(buffer), (std::vector<LoggedMessage>{
                                    {QtCriticalMsg, "traceMarkerBuffer :::: 100 ,  5", "default"},
                                    {QtCriticalMsg, "traceMarkerBuffer :::: 100 ,  6", "default"},
                                    {QtCriticalMsg, "traceMarkerBuffer :::: 100 ,  7", "default"},
                                    {QtCriticalMsg, "traceMarkerBuffer :::: 100 ,  8", "default"},
                                    {QtCriticalMsg, "traceMarkerBuffer :::: 100 ,  9", "default"},
                                    {QtCriticalMsg, "traceMarkerBuffer :::: 100 ,  10", "default"},
                                }));
}

TEST(MarkerReport, ShowsTheCapacityAndNotTheTraces) {
    traceRssiBuffer buffer(50, -4);
    std::vector<double> trace{1.0};
    buffer.push_back(trace);
    const LoggedMessage expected{QtCriticalMsg, "traceMarkerBuffer :::: 0 ,  0", "default"};
    EXPECT_EQ(reportOf(buffer), std::vector<LoggedMessage>(6, expected));
}

}  // namespace
