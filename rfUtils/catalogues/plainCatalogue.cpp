#include <rfUtils/catalogues/detail/choiceKey.h>
#include <rfUtils/catalogues/detail/plainCatalogue.h>
#include <rfUtils/catalogues/detail/plainJson.h>

#include <iterator>
#include <string_view>
#include <utility>

namespace rfu::detail {

namespace {

/// A member of a choice, and whether it was there. The last of several counts.
template <typename Value>
struct Member {
    Value value{};
    bool isThere = false;
};

struct Choice {
    Member<std::string_view> label;
    Member<std::string_view> id;
    Member<std::int32_t> enumValue;
    Member<std::int32_t> dispSeq;
};

class PlainReader {
public:
    explicit PlainReader(const QByteArray& bytes) : json_(bytes) {}

    std::optional<PlainCatalogue> read() {
        const bool isPlain =
            json_.takeObject([&](std::string_view itemId) { return takeItem(itemId); });
        if (!isPlain || !json_.isAtEnd()) {
            return std::nullopt;
        }
        return std::move(catalogue_);
    }

private:
    bool takeItem(std::string_view itemId) {
        const auto [item, isNew] = catalogue_.items.try_emplace(std::string(itemId));
        if (!isNew || !takeChoices(item->first, item->second)) {
            return false;
        }
        ++catalogue_.arrays;
        return true;
    }

    bool takeChoices(const std::string& itemId, PlainCatalogue::Choices& choices) {
        return json_.takeArray([&] {
            Choice choice;
            if (!json_.takeObject([&](std::string_view key) { return takeMember(key, choice); })) {
                return false;
            }
            store(itemId, choice, choices);
            return true;
        });
    }

    bool takeMember(std::string_view key, Choice& choice) {
        if (key == "label") {
            return take(choice.label);
        }
        if (key == "id") {
            return take(choice.id);
        }
        if (key == "enum") {
            return take(choice.enumValue);
        }
        if (key == "dispSeq") {
            return take(choice.dispSeq);
        }
        std::string_view ignored;
        return json_.takeScalar(ignored);
    }

    bool take(Member<std::string_view>& member) {
        member.isThere = true;
        return json_.takeText(member.value);
    }

    bool take(Member<std::int32_t>& member) {
        member.isThere = true;
        return json_.takeInteger(member.value);
    }

    /// A choice that lacks a member is no choice.
    static void store(const std::string& itemId, const Choice& choice,
                      PlainCatalogue::Choices& choices) {
        if (choice.label.isThere && choice.id.isThere && choice.enumValue.isThere &&
            choice.dispSeq.isThere) {
            std::string id = unescaped(choice.id.value);
            subItem& stored = choices[choiceKey(id)];
            stored.itemId = itemId;
            stored.id = std::move(id);
            stored.label = unescaped(choice.label.value);
            stored.enumValue = choice.enumValue.value;
            stored.dispSeq = choice.dispSeq.value;
        }
    }

    PlainJson json_;
    PlainCatalogue catalogue_;
};

}  // namespace

std::optional<PlainCatalogue> readPlainCatalogue(const QByteArray& bytes) {
    auto catalogue = PlainReader(bytes).read();
    if (catalogue) {
        for (auto item = catalogue->items.begin(); item != catalogue->items.end();) {
            item = item->second.empty() ? catalogue->items.erase(item) : std::next(item);
        }
    }
    return catalogue;
}  // GCOVR_EXCL_LINE: reached by exceptions alone, which destroy the catalogue here

}  // namespace rfu::detail
