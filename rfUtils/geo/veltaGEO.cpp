#include <rfUtils/geo/veltaGEO.h>

#include "detail/tokenizer.h"

#include <cstring>
#include <string_view>
#include <type_traits>

using namespace rfu::detail;

namespace {

constexpr std::size_t kMaxTokens = std::extent_v<decltype(stPaser::token), 0>;
static_assert(std::extent_v<decltype(stPaser::token), 1> == kMaxTokenLength + 1);

struct FormatCode {
    std::string_view extension;
    int code;
};

constexpr int kUnknownFormat = -1;

constexpr FormatCode kFormatCodes[] = {{"ASC", 0}, {"asc", 0}, {"BIL", 1}, {"bil", 1},
                                       {"BIP", 2}, {"bip", 2}, {"BSQ", 3}, {"bsq", 3}};

/// The three characters after the last '.'; the first three if there is none behind the name's
/// first character.
std::string_view threeLetterExtension(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    const bool hasExtension = dot != std::string_view::npos && dot > 0;
    return name.substr(hasExtension ? dot + 1 : 0, 3);
}

}  // namespace

veltaGEO::veltaGEO() = default;

void veltaGEO::setErrMsg(const QString& text) {
    errMsg = text;
}

bool veltaGEO::updateRasterMap() {
    return false;
}

void veltaGEO::makeToken(stPaser* record, const char* line) const {
    if (record == nullptr || line == nullptr) {
        return;
    }
    std::size_t count = 0;
    while (count < kMaxTokens) {
        const RawToken token = nextRawToken(line);
        if (token.atLineEnd()) {
            break;
        }
        char* const text = record->token[count++];
        text[copyTokenText(token, text)] = '\0';
    }
    record->count = static_cast<std::int32_t>(count);
}

int veltaGEO::GetFileNameExt(const char* fileName) const {
    if (fileName != nullptr) {
        const std::string_view extension = threeLetterExtension(fileName);
        for (const FormatCode& format : kFormatCodes) {
            if (format.extension == extension) {
                return format.code;
            }
        }
    }
    return kUnknownFormat;
}

QString veltaGEO::GetFileNameExtDel(const QString& fileName) const {
    return fileName.left(fileName.lastIndexOf(QLatin1Char('.')));
}
