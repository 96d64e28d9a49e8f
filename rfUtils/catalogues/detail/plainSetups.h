// Private to the catalogues: not installed, may change in any release.
#pragma once

#include <rfUtils/catalogues/detail/plainJson.h>

#include <optional>
#include <string_view>
#include <vector>

class QByteArray;

namespace rfu::detail {

/// An entry of a group. Nothing for a member that is not there; what is no text is one without data.
struct PlainSetup {
    std::optional<std::string_view> label;
    std::optional<std::string_view> id;
};

struct PlainGroup {
    std::string_view key;
    PlainJson setups;  // an array of objects
};

/// The groups of a result setup file, in ascending order of their keys, where it is plain JSON (see
/// PlainJson): an object of arrays of objects of scalars, in which no group stands twice.
/// They hold as long as the bytes.
/// @return nothing for any other file, well-formed or not
std::optional<std::vector<PlainGroup>> plainGroupsOf(const QByteArray& bytes);

/// Takes an array of setups, each of which `visit(setup)` gets.
template <typename Visit>
bool takePlainSetups(PlainJson& json, Visit visit) {
    return json.takeArray([&] {
        PlainSetup setup;
        const bool isPlain = json.takeObject([&](std::string_view key) {
            std::string_view ignored;
            if (key == "label") {
                return json.takeScalar(setup.label.emplace());
            }
            if (key == "id") {
                return json.takeScalar(setup.id.emplace());
            }
            return json.takeScalar(ignored);
        });
        if (isPlain) {
            visit(setup);
        }
        return isPlain;
    });
}

}  // namespace rfu::detail
