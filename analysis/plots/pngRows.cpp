#include "analysis/plots/pngRows.h"

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <new>

#include <png.h>

namespace rfu {

namespace {

constexpr int kFastest = 1;                       // of the levels of compression
constexpr std::size_t kBytesOfChunk = 256 << 10;  // of the file

void writeChunk(png_structp png, png_bytep bytes, std::size_t count) {
    auto* const output = static_cast<QIODevice*>(png_get_io_ptr(png));
    while (count > 0) {
        const qint64 written =
            output->write(reinterpret_cast<const char*>(bytes), static_cast<qint64>(count));
        if (written <= 0) {
            png_error(png, "cannot be written");
        }
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
}

void flush(png_structp) {}

[[noreturn]] void fail(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void ignore(png_structp, png_const_charp) {}

struct Colors {
    explicit Colors(const QVector<QRgb>& colors)
        : count(std::min(static_cast<int>(colors.size()), PNG_MAX_PALETTE_LENGTH)) {
        for (int i = 0; i < count; ++i) {
            palette[i] = {static_cast<png_byte>(qRed(colors[i])),
                          static_cast<png_byte>(qGreen(colors[i])),
                          static_cast<png_byte>(qBlue(colors[i]))};
            alpha[i] = static_cast<png_byte>(qAlpha(colors[i]));
            alphaCount = alpha[i] < 0xff ? i + 1 : alphaCount;
        }
    }

    int count;
    int alphaCount = 0;  // up to the last one that is not opaque
    png_color palette[PNG_MAX_PALETTE_LENGTH];
    png_byte alpha[PNG_MAX_PALETTE_LENGTH];
};

/// Encodes for one file. libpng ends its functions by a jump where they fail.
class Encoder {
public:
    Encoder()
        : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore)),
          info_(png_ == nullptr ? nullptr : png_create_info_struct(png_)) {
        if (info_ == nullptr) {
            png_destroy_write_struct(&png_, nullptr);
            throw std::bad_alloc();
        }
    }
    ~Encoder() { png_destroy_write_struct(&png_, &info_); }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    bool begin(QIODevice& output, const QSize& size, const Colors& colors) {
        if (setjmp(png_jmpbuf(png_)) != 0) {
            return false;
        }
        png_set_write_fn(png_, &output, writeChunk, flush);
        png_set_compression_level(png_, kFastest);
        png_set_compression_buffer_size(png_, kBytesOfChunk);
        png_set_IHDR(png_, info_, static_cast<png_uint_32>(size.width()),
                     static_cast<png_uint_32>(size.height()), 8, PNG_COLOR_TYPE_PALETTE,
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_set_PLTE(png_, info_, colors.palette, colors.count);
        if (colors.alphaCount > 0) {
            png_set_tRNS(png_, info_, colors.alpha, colors.alphaCount, nullptr);
        }
        png_write_info(png_, info_);
        return true;
    }

    bool add(const uchar* row) {
        if (setjmp(png_jmpbuf(png_)) != 0) {
            return false;
        }
        png_write_row(png_, row);
        return true;
    }

    bool end() {
        if (setjmp(png_jmpbuf(png_)) != 0) {
            return false;
        }
        png_write_end(png_, nullptr);
        return true;
    }

private:
    png_structp png_;
    png_infop info_;
};

}  // namespace

bool writePng(QIODevice& output, const PixelRows& picture) {
    Encoder encoder;
    bool isWritten = encoder.begin(output, picture.size, Colors(picture.colors));
    if (isWritten) {
        picture.forEachRow([&](const uchar* row) { return isWritten = encoder.add(row); });
    }
    return isWritten && encoder.end();
}

}  // namespace rfu
