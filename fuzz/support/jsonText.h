#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "support/input.h"

namespace rfu::fuzz {

/// JSON made from bytes: almost always well-formed and of the catalogues' shape, with repeated keys
/// and values of the wrong type now and then. Qt's parser is not instrumented, so that the engine
/// would hardly get past it with random bytes.
class JsonText {
public:
    explicit JsonText(Input& input) : input_(input) {}

    /// An object of items.
    std::string document() {
        std::string text = "{";
        const int first = input_.byte();
        for (int i = input_.below(4); i >= 0; --i) {
            text += key(first + i) + ':';
            text += rarely() ? value(0) : array();
            text += ',';
        }
        return closed(text, '}');
    }

private:
    bool rarely() { return input_.byte() >= 224; }

    static std::string closed(std::string text, char end) {
        if (text.back() == ',') {
            text.back() = end;
        } else {
            text += end;
        }
        return text;
    }

    /// Rarely the same key for different numbers: when it replaces an array, the engine searches
    /// for leaks (Qt has one there), which takes as long as a hundred runs.
    std::string key(int number) {
        static const std::array<std::string, 8> kKeys = {
            "\"\"", "\"a\"", "\"b\"", "\"10\"", "\"9\"", "\"\\u00e4\"", "\"before\"", "\"A\""};
        if (rarely()) {
            return rarely() ? input_.pick(kKeys) : quoted();
        }
        return kKeys[static_cast<std::size_t>(number) % kKeys.size()];
    }

    std::string member() {
        static const std::array<std::string, 6> kMembers = {"\"label\"",   "\"id\"", "\"enum\"",
                                                            "\"dispSeq\"", "\"ID\"", "\"x\""};
        return input_.pick(kMembers);
    }

    /// Any bytes, also ones that JSON refuses; only quotes and backslashes are escaped.
    std::string quoted() {
        std::string text = "\"";
        for (const char c : input_.text()) {
            if (c == '"' || c == '\\') {
                text += '\\';
            }
            text += c;
        }
        return text + '"';
    }

    std::string array() {
        std::string text = "[";
        for (int i = input_.below(5); i > 0; --i) {
            text += rarely() ? value(0) : record();
            text += ',';
        }
        return closed(text, ']');
    }

    std::string record() {
        std::string text = "{";
        for (const char* name : {"label", "id", "enum", "dispSeq"}) {
            if (!rarely()) {
                text += std::string("\"") + name + "\":" + value(0) + ',';
            }
        }
        for (int i = input_.below(8) - 5; i > 0; --i) {
            text += member() + ':';
            text += value(0) + ',';
        }
        return closed(text, '}');
    }

    std::string nestedArray(int depth) {
        const std::string first = value(depth);
        return '[' + first + ',' + value(depth) + ']';
    }

    std::string nestedObject(int depth) {
        const std::string name = member();
        return '{' + name + ':' + value(depth) + '}';
    }

    std::string value(int depth) {
        static const std::array<std::string, 20> kValues = {
            "0",    "1",           "-1",    "2.0",     "2.5",   "2e0",        "2147483647",
            "null", "-2147483648", "1e400", "-0",      "true",  "1e-400",     "2147483648",
            "\"\"", "\"man\"",     "false", "\"MAN\"", "\"2\"", "\"\\ud800\""};
        constexpr int kMaxDepth = 6;
        const std::size_t kind = input_.byte();
        if (kind >= 240 && depth < kMaxDepth) {
            return kind % 2 == 0 ? nestedArray(depth + 1) : nestedObject(depth + 1);
        }
        return kind >= 160 ? quoted() : kValues[kind % kValues.size()];
    }

    Input& input_;
};

/// The text of a run: JSON made from the bytes after a first byte of 0x01, otherwise the bytes
/// themselves.
inline std::string jsonTextOf(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::string text(input.rest());
    return input.byte() == 1 ? JsonText(input).document() : text;
}

}  // namespace rfu::fuzz
