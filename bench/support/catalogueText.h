// Catalogue files of any size.
#pragma once

#include <cstddef>
#include <string>

namespace rfu::bench {

inline std::string itemName(std::size_t item) {
    return "item" + std::to_string(item);
}

/// In lower case, as in files; at most 15 bytes.
inline std::string choiceName(std::size_t choice) {
    return "choice" + std::to_string(choice);
}

/// A catalogue file with the usual indentation.
inline std::string catalogueText(std::size_t items, std::size_t choicesOfItem) {
    std::string text = "{";
    for (std::size_t item = 0; item < items; ++item) {
        text += item == 0 ? "\n" : ",\n";
        text += "  \"" + itemName(item) + "\": [";
        for (std::size_t choice = 0; choice < choicesOfItem; ++choice) {
            const std::string number = std::to_string(choice);
            text += choice == 0 ? "\n" : ",\n";
            text += "    {\"label\": \"Choice " + number + "\", \"id\": \"" + choiceName(choice) +
                    "\", \"enum\": " + number + ", \"dispSeq\": " + std::to_string(choice + 1) +
                    "}";
        }
        text += "\n  ]";
    }
    return text + "\n}\n";
}

}  // namespace rfu::bench
