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
#include <tests/support/setupsWalk.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <vector>

using namespace rfu::fuzz;

namespace {

void requireSetups(const ResultSetup& list, const SetupsWalk& expected, int times) {
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

void requireLines(const std::vector<LoggedMessage>& messages, const SetupsWalk& expected) {
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
    const SetupsWalk expected(text);

    const MessageLog log;
    ResultSetup list;
    for (int times = 1; times <= 2; ++times) {
        REQUIRE(list.loadJson(file.path()) == expected.loads);
        requireSetups(list, expected, times);
        requireLines(MessageLog::take(), expected);
    }
    return 0;
}
