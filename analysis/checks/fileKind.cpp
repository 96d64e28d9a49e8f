#include "analysis/checks/fileKind.h"

#include <QFileInfo>
#include <algorithm>

#include "analysis/catalogues/catalogueCheck.h"
#include "analysis/catalogues/jsonKind.h"
#include "analysis/catalogues/setupsCheck.h"
#include "analysis/maps/ascCheck.h"
#include "analysis/maps/bilCheck.h"
#include "analysis/maps/rasterFile.h"
#include "analysis/maps/tabFile.h"

namespace rfu {

namespace {

Findings checkBilByHeader(const QString& file) {
    return checkBil(file, checkHdr(withExtension(file, "hdr")));
}

template <typename Matches>
const KnownKind* find(Matches matches) {
    const auto& kinds = knownKinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(), matches);
    return found == kinds.end() ? nullptr : &*found;
}

const KnownKind* kindOfJson(const QString& file) {
    switch (jsonContentOf(file)) {
        case JsonContent::Catalogue:
            return &kindOf(FileKind::Catalogue);
        case JsonContent::Setups:
            return &kindOf(FileKind::Setups);
        default:
            return nullptr;
    }
}

}  // namespace

const std::vector<KnownKind>& knownKinds() {
    // clang-format off
    static const std::vector<KnownKind> kKinds = {
        {FileKind::Asc, "asc", "asc", ascRules, [](const QString& file) { return checkAsc(file).findings; }},
        {FileKind::Hdr, "hdr", "hdr", hdrRules, [](const QString& file) { return checkHdr(file).findings; }},
        {FileKind::Bil, "bil", "bil", bilRules, checkBilByHeader},
        {FileKind::Tab, "tab", "tab", tabRules, [](const QString& file) { return checkTab(file).findings; }},
        {FileKind::Catalogue, "catalogue", "json", catalogueRules, checkCatalogue},
        {FileKind::Setups, "setups", "json", setupsRules, checkSetups}};
    // clang-format on
    return kKinds;
}

const KnownKind& kindOf(FileKind kind) {
    return *find([kind](const KnownKind& known) { return known.kind == kind; });
}

const KnownKind* kindOf(const QString& file) {
    const QString extension = QFileInfo(file).suffix().toLower();
    if (extension == QLatin1String("json")) {
        return kindOfJson(file);
    }
    return find(
        [&](const KnownKind& known) { return extension == QLatin1String(known.extension); });
}

}  // namespace rfu
