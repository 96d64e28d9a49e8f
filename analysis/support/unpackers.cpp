#include "analysis/support/unpackers.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

#ifdef RFUTILS_HAS_ZLIB
#include <zlib.h>
#endif
#ifdef RFUTILS_HAS_LZMA
#include <lzma.h>
#endif
#ifdef RFUTILS_HAS_ZSTD
#include <zstd.h>
#include <zstd_errors.h>
#endif

namespace rfu {

#ifdef RFUTILS_HAS_ZLIB

namespace {

class GzipUnpacker : public Unpacker {
public:
    explicit GzipUnpacker(const QString& file) : Unpacker(file) {
        constexpr int kGzipOnly = 16;
        if (inflateInit2(&stream_, MAX_WBITS + kGzipOnly) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~GzipUnpacker() override { inflateEnd(&stream_); }

private:
    void begin() override { inflateReset(&stream_); }

    Step advance(std::string_view& packed, char* unpacked, std::size_t room) override {
        // The library has no const here and does not write.
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
        stream_.avail_in = static_cast<uInt>(packed.size());
        stream_.next_out = reinterpret_cast<Bytef*>(unpacked);
        stream_.avail_out = static_cast<uInt>(room);
        const int result = inflate(&stream_, Z_NO_FLUSH);
        packed.remove_prefix(packed.size() - stream_.avail_in);
        if (result == Z_MEM_ERROR) {
            throw std::bad_alloc();
        }
        const bool isOpen = result == Z_OK || result == Z_BUF_ERROR;  // the latter: nothing to do
        return {room - stream_.avail_out, isOpen                   ? State::Open
                                          : result == Z_STREAM_END ? State::Ended
                                                                   : State::Damaged};
    }

    z_stream stream_{};
};

}  // namespace

std::unique_ptr<Unpacker> makeGzipUnpacker(const QString& file) {
    return std::make_unique<GzipUnpacker>(file);
}

#endif

#ifdef RFUTILS_HAS_LZMA

namespace {

class XzUnpacker : public Unpacker {
public:
    explicit XzUnpacker(const QString& file) : Unpacker(file) {}
    ~XzUnpacker() override { lzma_end(&stream_); }

private:
    void begin() override {
        if (lzma_stream_decoder(&stream_, kMaxMemory, 0) != LZMA_OK) {
            throw std::bad_alloc();
        }
    }

    Step advance(std::string_view& packed, char* unpacked, std::size_t room) override {
        stream_.next_in = reinterpret_cast<const std::uint8_t*>(packed.data());
        stream_.avail_in = packed.size();
        stream_.next_out = reinterpret_cast<std::uint8_t*>(unpacked);
        stream_.avail_out = room;
        const lzma_ret result = lzma_code(&stream_, LZMA_RUN);
        packed.remove_prefix(packed.size() - stream_.avail_in);
        return {room - stream_.avail_out, stateOf(result)};
    }

    static State stateOf(lzma_ret result) {
        switch (result) {
            case LZMA_OK:
            case LZMA_BUF_ERROR:  // nothing to do
                return State::Open;
            case LZMA_STREAM_END:
                return State::Ended;
            case LZMA_MEMLIMIT_ERROR:
                return State::TooLarge;
            case LZMA_MEM_ERROR:
                throw std::bad_alloc();
            default:
                return State::Damaged;
        }
    }

    lzma_stream stream_ = LZMA_STREAM_INIT;
};

}  // namespace

std::unique_ptr<Unpacker> makeXzUnpacker(const QString& file) {
    return std::make_unique<XzUnpacker>(file);
}

#endif

#ifdef RFUTILS_HAS_ZSTD

namespace {

class ZstdUnpacker : public Unpacker {
public:
    explicit ZstdUnpacker(const QString& file) : Unpacker(file), stream_(ZSTD_createDStream()) {
        if (stream_ == nullptr) {
            throw std::bad_alloc();
        }
        static_assert(kMaxMemory == std::size_t{1} << kMaxWindowBits);
        ZSTD_DCtx_setParameter(stream_, ZSTD_d_windowLogMax, kMaxWindowBits);
    }
    ~ZstdUnpacker() override { ZSTD_freeDStream(stream_); }

private:
    static constexpr int kMaxWindowBits = 27;

    void begin() override { ZSTD_DCtx_reset(stream_, ZSTD_reset_session_only); }

    Step advance(std::string_view& packed, char* unpacked, std::size_t room) override {
        ZSTD_inBuffer input = {packed.data(), packed.size(), 0};
        ZSTD_outBuffer output = {unpacked, room, 0};
        const std::size_t result = ZSTD_decompressStream(stream_, &output, &input);
        packed.remove_prefix(input.pos);
        return {output.pos, stateOf(result)};
    }

    static State stateOf(std::size_t result) {
        if (!ZSTD_isError(result)) {
            return result == 0 ? State::Ended : State::Open;
        }
        switch (ZSTD_getErrorCode(result)) {
            case ZSTD_error_frameParameter_windowTooLarge:
                return State::TooLarge;
            case ZSTD_error_memory_allocation:
                throw std::bad_alloc();
            default:
                return State::Damaged;
        }
    }

    ZSTD_DStream* stream_;
};

}  // namespace

std::unique_ptr<Unpacker> makeZstdUnpacker(const QString& file) {
    return std::make_unique<ZstdUnpacker>(file);
}

#endif

}  // namespace rfu
