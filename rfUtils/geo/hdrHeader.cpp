#include "detail/gridHeader.h"
#include "detail/lineReader.h"
#include "detail/tokenizer.h"

#include <rfUtils/detail/regularFile.h>
#include <rfUtils/geo/veltaGEO.h>

#include <array>
#include <string_view>

using namespace rfu::detail;

bool veltaGEO::loadHDRFile(const QString& fileName) {
    isLoaded = 0;
    RegularFile file(GetFileNameExtDel(fileName) + QLatin1String(".hdr"));
    if (!file.open()) {
        setErrMsg(QStringLiteral("HDR file not found"));
        return false;
    }
    LineReader lines(file.device(), kMaxHdrLine);
    while (char* const line = lines.next()) {
        std::array<std::string_view, 3> tokens;
        if (Tokenizer(line).take(tokens) != 2) {
            continue;
        }
        const auto [key, value, none] = tokens;
        if (key == kPixelTypeKey) {
            isFloat = value == "FLOAT" ? 1 : 0;
        } else if (!storeGridHeader(*this, kHdrHeader, key, value)) {
            return false;
        }
    }
    return true;
}
