#include "analysis/support/compression.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <string>
#include <thread>
#include <vector>

#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "packedSamples.h"

#include <unistd.h>

using namespace rfu::test;

namespace {

std::string packingNameOf(const std::string& bytes) {
    const rfu::Packing* const packing = rfu::packingOf(bytes);
    return packing == nullptr ? "none" : packing->name;
}

bool isUnpacked(const std::string& bytes) {
    return rfu::packingOf(bytes)->makeUnpacker != nullptr;
}

/// What a reader makes of a compressed file: its lines, each with a "|" behind it, and how it ended.
std::string readingOf(const std::string& bytes) {
    const TempFiles files;
    const QString file = QString::fromStdString(files.write("lines", bytes));
    std::string text;
    try {
        rfu::LineReader reader(file);
        std::string_view line;
        while (reader.next(line)) {
            text += std::string(line) + '|';
        }
        return text + (reader.endsEarly() ? "early" : "");
    } catch (const rfu::InputError& error) {
        EXPECT_EQ(error.file(), file);
        return text + error.problem();
    }
}

struct Sample {
    const char* name;
    std::string bytes;
    std::size_t check;  // where a byte of its checksum is
};

/// Those whose libraries were found.
std::vector<Sample> samples() {
    std::vector<Sample> found;
    for (const Sample& sample : {Sample{"gzip", kGzip, kGzip.size() - 6}, Sample{"xz", kXz, 50},
                                 Sample{"zstd", kZstd, kZstd.size() - 1}}) {
        if (isUnpacked(sample.bytes)) {
            found.push_back(sample);
        }
    }
    return found;
}

}  // namespace

TEST(Compression, IsToldByTheFirstBytes) {
    EXPECT_EQ(packingNameOf(kGzip), "gzip");
    EXPECT_EQ(packingNameOf(kXz), "xz");
    EXPECT_EQ(packingNameOf(kZstd), "zstd");
    for (const std::string& text :
         {std::string(), std::string("-50,-60\n"), kGzip.substr(0, 1), kXz.substr(0, 5),
          kZstd.substr(0, 3), " " + kGzip, std::string("7zXZ")}) {
        EXPECT_EQ(packingNameOf(text), "none") << text;
    }
    EXPECT_EQ(readingOf("a\n\x1F\x8B\n"), "a|\x1F\x8B|") << "the first bytes of a later line";
}

TEST(Compression, IsRefusedWithoutItsLibrary) {
    EXPECT_EQ(rfu::CompressedInput(QStringLiteral("night.gz"), "gzip").message(),
              "night.gz: is compressed; unpack it: gzip -dc night.gz");
    for (const std::string& bytes : {kGzip, kXz, kZstd}) {
        if (!isUnpacked(bytes)) {
            EXPECT_NE(readingOf(bytes).find("is compressed; unpack it: " + packingNameOf(bytes)),
                      std::string::npos);
        }
    }
}

TEST(Compression, UnpacksStreamsOneAfterAnother) {
    for (const Sample& sample : samples()) {
        const std::string zeros(8, '\0');
        EXPECT_EQ(readingOf(sample.bytes), "a,b|second|third|") << sample.name;
        EXPECT_EQ(readingOf(sample.bytes + sample.bytes), "a,b|second|third|a,b|second|third|")
            << sample.name;
        EXPECT_EQ(readingOf(sample.bytes + zeros + sample.bytes + zeros),
                  "a,b|second|third|a,b|second|third|")
            << sample.name;
    }
}

TEST(Compression, MayEndEarly) {
    for (const Sample& sample : samples()) {
        for (std::size_t length = 6; length < sample.bytes.size(); ++length) {
            std::string reading = readingOf(sample.bytes.substr(0, length));
            ASSERT_GE(reading.size(), 5U) << sample.name << ' ' << length;
            EXPECT_EQ(reading.substr(reading.size() - 5), "early") << sample.name << ' ' << length;
            reading.resize(reading.size() - 5);
            EXPECT_EQ(std::string("a,b|second|third|").substr(0, reading.size()), reading);
            EXPECT_TRUE(reading.empty() || reading.back() == '|') << reading;
        }
    }
}

TEST(Compression, NamesDamage) {
    for (const Sample& sample : samples()) {
        std::string damaged = sample.bytes;
        damaged[sample.check] = static_cast<char>(damaged[sample.check] ^ 1);
        const std::string reading = readingOf(damaged);
        EXPECT_NE(reading.find("the compressed data is damaged"), std::string::npos)
            << sample.name << ": " << reading;
        EXPECT_EQ(readingOf(sample.bytes + "text of other lines\n"),
                  "a,b|second|third|the compressed data is damaged")
            << sample.name;
    }
}

TEST(Compression, TakesBoundedMemory) {
    if (!isUnpacked(kZstd)) {
        GTEST_SKIP() << "built without zstd";
    }
    std::string much;
    for (int i = 0; i < 100000; ++i) {
        much += kZstdOfOneLetter;  // 12 GiB in all
    }
    EXPECT_EQ(readingOf(much), "the line is longer than 1 MiB");
    // A frame that refers 256 MiB back: its window is 2^(10 + 18).
    EXPECT_EQ(readingOf("\x28\xB5\x2F\xFD\x00\x90\x01\x00\x00"s),
              "takes more than 128 MiB of memory to unpack");
}

TEST(Compression, ComesAsFarAsItWasFlushed) {
    if (!isUnpacked(kGzip)) {
        GTEST_SKIP() << "built without gzip";
    }
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    const auto write = [&ends](const std::string& bytes) {
        EXPECT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    };
    rfu::LineReader reader(QStringLiteral("/dev/fd/%1").arg(ends[0]));
    std::thread byByte([&write] {
        for (const char byte : kFlushedGzip) {
            write(std::string(1, byte));
        }
    });
    std::string_view line;
    EXPECT_TRUE(reader.next(line) && line == "a,b") << "while the pipe is open";
    byByte.join();
    write(kRestOfFlushedGzip);
    EXPECT_TRUE(reader.next(line) && line == "second");
    ::close(ends[1]);
    EXPECT_TRUE(reader.next(line) && line == "third");
    EXPECT_FALSE(reader.next(line) || reader.endsEarly());
    ::close(ends[0]);
}
