#include "detail/gridHeader.h"
#include "detail/lineReader.h"
#include "detail/tokenizer.h"

#include <rfUtils/detail/regularFile.h>
#include <rfUtils/geo/veltaGEO.h>

using namespace rfu::detail;

namespace {

constexpr std::size_t kMaxLineLength = 10239;

constexpr GridHeaderKeys kKeys = {"NCOLS", "NROWS", "ULXMAP", "ULYMAP", "XDIM", "NODATA"};

}  // namespace

bool veltaGEO::loadHDRFile(const QString& fileName) {
    isLoaded = 0;
    RegularFile file(GetFileNameExtDel(fileName) + QLatin1String(".hdr"));
    if (!file.open()) {
        setErrMsg(QStringLiteral("HDR file not found"));
        return false;
    }
    LineReader lines(file.device(), kMaxLineLength);
    while (char* const line = lines.next()) {
        std::array<std::string_view, 3> tokens;
        if (Tokenizer(line).take(tokens) != 2) {
            continue;
        }
        const auto [key, value, none] = tokens;
        if (key == "PIXELTYPE") {
            isFloat = value == "FLOAT" ? 1 : 0;
        } else if (!storeGridHeader(*this, kKeys, key, value)) {
            return false;
        }
    }
    return true;
}
