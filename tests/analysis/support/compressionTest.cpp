#include "analysis/support/compression.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string unpackerNameOf(const std::string& bytes) {
    const char* const name = rfu::unpackerOf(bytes);
    return name == nullptr ? "none" : name;
}

}  // namespace

TEST(Compression, IsToldByTheFirstBytes) {
    // What gzip, xz and zstd write for an empty input begins so.
    const std::string gzip("\x1F\x8B\x08\x00\x00\x00\x00\x00\x00\x03", 10);
    const std::string xz(
        "\xFD"
        "7zXZ\x00\x00\x04",
        8);
    const std::string zstd("\x28\xB5\x2F\xFD\x24\x00", 6);
    EXPECT_EQ(unpackerNameOf(gzip), "gzip");
    EXPECT_EQ(unpackerNameOf(xz), "xz");
    EXPECT_EQ(unpackerNameOf(zstd), "zstd");
    for (const std::string& text :
         {std::string(), std::string("-50,-60\n"), gzip.substr(0, 1), xz.substr(0, 5),
          zstd.substr(0, 3), " " + gzip, std::string("7zXZ")}) {
        EXPECT_EQ(unpackerNameOf(text), "none") << text;
    }
}
