#include <rfUtils/catalogues/detail/plainSetups.h>

#include <algorithm>

namespace rfu::detail {

std::optional<std::vector<PlainGroup>> plainGroupsOf(const QByteArray& bytes) {
    PlainJson json(bytes);
    std::vector<PlainGroup> groups;
    const bool isPlain = json.takeObject([&](std::string_view key) {
        groups.push_back({key, json});
        return takePlainSetups(json, [](const PlainSetup& /*setup*/) {});
    });
    if (!isPlain || !json.isAtEnd()) {
        return std::nullopt;
    }
    std::sort(groups.begin(), groups.end(),
              [](const PlainGroup& a, const PlainGroup& b) { return a.key < b.key; });
    const auto twice =
        std::adjacent_find(groups.begin(), groups.end(),
                           [](const PlainGroup& a, const PlainGroup& b) { return a.key == b.key; });
    if (twice != groups.end()) {
        return std::nullopt;
    }
    return groups;
}

}  // namespace rfu::detail
