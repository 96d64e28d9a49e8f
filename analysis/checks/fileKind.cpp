#include "analysis/checks/fileKind.h"

#include <QFileInfo>
#include <algorithm>

#include "analysis/catalogues/catalogueCheck.h"
#include "analysis/catalogues/jsonKind.h"
#include "analysis/catalogues/setupsCheck.h"
#include "analysis/checks/mapSets.h"
#include "analysis/checks/mendFile.h"
#include "analysis/maps/mapMend.h"
#include "analysis/recordings/recordingCheck.h"

namespace rfu {

namespace {

/// The extension in lower case, of a packed file that of what it holds.
QString extensionOf(const QString& file) {
    static constexpr const char* kPacked[] = {"gz", "xz", "zst"};
    const QFileInfo name(file);
    const QString last = name.suffix().toLower();
    const bool isPacked =
        std::any_of(std::begin(kPacked), std::end(kPacked),
                    [&](const char* extension) { return last == QLatin1String(extension); });
    return isPacked ? QFileInfo(name.completeBaseName()).suffix().toLower() : last;
}

bool hasExtension(const KnownKind& kind, const QString& extension) {
    return std::any_of(kind.extensions.begin(), kind.extensions.end(),
                       [&](const char* known) { return extension == QLatin1String(known); });
}

template <JsonContent content>
bool holds(const QString& file) {
    return jsonContentOf(file) == content;
}

template <typename Matches>
const KnownKind* find(Matches matches) {
    const auto& kinds = knownKinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(), matches);
    return found == kinds.end() ? nullptr : &*found;
}

}  // namespace

const std::vector<KnownKind>& knownKinds() {
    // clang-format off
    static const std::vector<KnownKind> kKinds = {
        {FileKind::Asc, "asc", {"asc"}, ascSetRules, checkAscSet, mendAscFile, filesOfGrid},
        {FileKind::Hdr, "hdr", {"hdr"}, hdrSetRules, checkHdrSet, mendHdrFile, filesOfGrid},
        {FileKind::Bil, "bil", {"bil"}, bilSetRules, checkBilSet, nullptr, filesOfGrid},
        {FileKind::Clr, "clr", {"clr"}, clrSetRules, checkClrSet, mendClrFile},
        {FileKind::Tab, "tab", {"tab"}, tabSetRules, checkTabSet, mendTabFile, filesOfTab},
        {FileKind::Catalogue, "catalogue", {"json"}, catalogueRules, checkCatalogue, nullptr, nullptr, holds<JsonContent::Catalogue>},
        {FileKind::Setups, "setups", {"json"}, setupsRules, checkSetups, nullptr, nullptr, holds<JsonContent::Setups>},
        {FileKind::Recording, "recording", {"csv"}, recordingRules, checkRecording, mendRecordingFile, nullptr, holdsHops}};
    // clang-format on
    return kKinds;
}

const KnownKind& kindOf(FileKind kind) {
    return *find([kind](const KnownKind& known) { return known.kind == kind; });
}

const KnownKind* kindOf(const QString& file) {
    const QString extension = extensionOf(file);
    return find([&](const KnownKind& known) {
        return hasExtension(known, extension) && (known.isKind == nullptr || known.isKind(file));
    });
}

bool hasKnownExtension(const QString& file) {
    const QString extension = extensionOf(file);
    return find([&](const KnownKind& known) { return hasExtension(known, extension); }) != nullptr;
}

}  // namespace rfu
