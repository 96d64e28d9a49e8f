#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rfu {

/// Some bytes of a JSON text, from the first to behind the last one.
struct JsonPlace {
    std::int64_t begin;
    std::int64_t end;
};

struct JsonMember {
    JsonPlace key;  ///< with its quotes
    JsonPlace value;
};

/// Where a JSON text is none, and why.
struct JsonFault {
    std::int64_t offset;
    std::string text;
};

/// What Qt's parser reads although JSON does not allow it.
struct JsonOddity {
    JsonPlace place;
    std::string text;
    std::string standard;  ///< what JSON writes for it
};

/// Whether a character may stand in a number.
bool isOfNumbers(char c);

/// Tells where the members and elements of a JSON text stand. It says nothing about their values: those are
/// what the library's parser makes of them, which reads a little more than JSON.
class JsonPlaces {
public:
    /// @param bytes of a whole document, a byte-order mark in front of it included
    explicit JsonPlaces(const QByteArray& bytes);

    /// The place of the whole document, which has a fault where there is no value.
    const JsonPlace& document() const { return document_; }

    /// What is no JSON, though Qt reads it, by places. Nothing of it is in the way of the other questions.
    const std::vector<JsonOddity>& oddities() const { return oddities_; }

    /// What is no JSON besides; the places behind it are unknown.
    const std::optional<JsonFault>& fault() const { return fault_; }

    /// @param object that begins with "{"
    std::vector<JsonMember> membersOf(const JsonPlace& object) const;

    /// @param array that begins with "["
    std::vector<JsonPlace> elementsOf(const JsonPlace& array) const;

private:
    /// Takes a text that goes on behind its line for the fault, if there is one in front of it: what follows was
    /// read with texts and the rest in each other's place.
    void takeOpenText(std::string_view bytes);

    QByteArray standard_;  // byte for byte as long as the text, without its oddities
    std::vector<JsonOddity> oddities_;
    std::optional<JsonFault> fault_;
    JsonPlace document_;
};

}  // namespace rfu
