// Recordings of hops of one bin each, 1 MHz wide and named by a letter: a begins at 100 MHz, b at
// 101 MHz, ...
#pragma once

#include <sstream>
#include <string>

namespace rfu::test {

inline std::string hopLine(char name, const std::string& seconds, const std::string& level) {
    const int low = 100 + (name - 'a');
    const bool hasOneDigit = seconds.find('.') == 1 || seconds.size() == 1;
    return "2024-01-01, 10:00:" + (hasOneDigit ? "0" + seconds : seconds) + ", " +
           std::to_string(low) + "000000, " + std::to_string(low + 1) + "000000, 1000000, 5, " +
           level + "\n";
}

/// The lines of words such as "a0" (hop a, stamped 10:00:00) or "b1.5"; the level of a line is its
/// number, negative.
inline std::string hopLines(const std::string& words) {
    std::istringstream stream(words);
    std::string lines;
    int number = 0;
    for (std::string word; stream >> word;) {
        lines += hopLine(word[0], word.substr(1), std::to_string(--number));
    }
    return lines;
}

}  // namespace rfu::test
