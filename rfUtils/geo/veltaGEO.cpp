#include <rfUtils/geo/veltaGEO.h>

#include "detail/tokenizer.h"

#include <cstddef>
#include <string_view>
#include <type_traits>

using namespace rfu::detail;

namespace {

constexpr std::size_t kMaxTokens = std::extent_v<decltype(stPaser::token), 0>;
static_assert(std::extent_v<decltype(stPaser::token), 1> == kMaxTokenLength + 1);

/// Extensions of raster files. The index is the format's code.
constexpr std::string_view kFormats[][2] = {
    {"ASC", "asc"}, {"BIL", "bil"}, {"BIP", "bip"}, {"BSQ", "bsq"}};

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
        int code = 0;
        for (const auto& [capitals, smallLetters] : kFormats) {
            if (extension == capitals || extension == smallLetters) {
                return code;
            }
            ++code;
        }
    }
    return -1;
}

QString veltaGEO::GetFileNameExtDel(const QString& fileName) const {
    return fileName.left(fileName.lastIndexOf(QLatin1Char('.')));
}
