#include "analysis/support/stateStream.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "analysis/support/files.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

constexpr int kBytesOfBlock = 65536;
constexpr unsigned kBits = 7;  // of a count in each byte
constexpr unsigned kMore = 1U << kBits;
constexpr std::size_t kBytesOfNumber = sizeof(double);

static_assert(std::numeric_limits<double>::is_iec559 && kBytesOfNumber == 8);

/// Small for numbers near 0 on both sides.
std::uint64_t folded(std::int64_t value) {
    const auto bits = static_cast<std::uint64_t>(value);
    return value < 0 ? ~(bits << 1U) : bits << 1U;
}

std::int64_t unfolded(std::uint64_t value) {
    const auto half = static_cast<std::int64_t>(value >> 1U);
    return (value & 1U) != 0 ? -half - 1 : half;
}

}  // namespace

StateWriter::StateWriter(std::function<void(std::string_view bytes)> sink)
    : sink_(std::move(sink)) {}

void StateWriter::flush() {
    hash_.addData(QByteArray::fromRawData(held_.data(), static_cast<int>(held_.size())));
    sink_(held_);
    held_.clear();
}

void StateWriter::bytes(std::string_view bytes) {
    size_ += bytes.size();
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, kBytesOfBlock);
        held_ += piece;
        bytes.remove_prefix(piece.size());
        if (held_.size() >= kBytesOfBlock) {
            flush();
        }
    }
}

void StateWriter::count(std::uint64_t value) {
    char bytes[10];
    std::size_t size = 0;
    for (; value >= kMore; value >>= kBits) {
        bytes[size++] = static_cast<char>(value % kMore | kMore);
    }
    bytes[size++] = static_cast<char>(value);
    this->bytes({bytes, size});
}

void StateWriter::integer(std::int64_t value) {
    count(folded(value));
}

void StateWriter::number(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    char bytes[kBytesOfNumber];
    for (char& byte : bytes) {
        byte = static_cast<char>(bits & 0xFFU);
        bits >>= 8U;
    }
    this->bytes({bytes, sizeof bytes});
}

void StateWriter::text(std::string_view text) {
    count(text.size());
    bytes(text);
}

void StateWriter::finish() {
    flush();
    const QByteArray checksum = hash_.result();
    sink_({checksum.constData(), static_cast<std::size_t>(checksum.size())});
}

StateReader::StateReader(const QString& name, std::uint64_t begin, std::uint64_t end)
    : name_(name), left_(end - begin) {
    openRegular(file_, name);
    require(begin <= end && end <= static_cast<std::uint64_t>(file_.size()) &&
            file_.seek(static_cast<qint64>(begin)));
}

void StateReader::fail() const {
    throw InputError(name_, kDamagedState);
}

void StateReader::fill() {
    held_ = file_.read(static_cast<qint64>(std::min<std::uint64_t>(left_, kBytesOfBlock)));
    at_ = 0;
    require(!held_.isEmpty());
    left_ -= static_cast<std::uint64_t>(held_.size());
}

unsigned char StateReader::next() {
    if (at_ == held_.size()) {
        fill();
    }
    return static_cast<unsigned char>(held_.at(at_++));
}

/// Each count has one text only: no leading zeros.
std::uint64_t StateReader::count(std::uint64_t most) {
    std::uint64_t value = 0;
    unsigned shift = 0;
    unsigned char byte = next();
    for (; byte >= kMore; byte = next(), shift += kBits) {
        require(shift < 63);
        value |= std::uint64_t{byte % kMore} << shift;
    }
    require((byte > 0 || shift == 0) && (shift < 63 || byte == 1));
    value |= std::uint64_t{byte} << shift;
    require(value <= most);
    return value;
}

std::int64_t StateReader::integer(std::int64_t least, std::int64_t most) {
    const std::int64_t value = unfolded(count());
    require(value >= least && value <= most);
    return value;
}

double StateReader::number() {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < kBytesOfNumber; ++i) {
        bits |= std::uint64_t{next()} << (8 * i);
    }
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

double StateReader::finite() {
    const double value = number();
    require(std::isfinite(value));
    return value;
}

std::size_t StateReader::countOf(std::size_t bytesOfEach) {
    const std::uint64_t value = count();
    const std::uint64_t rest = left_ + static_cast<std::uint64_t>(held_.size() - at_);
    require(value <= rest / bytesOfEach);
    return static_cast<std::size_t>(value);
}

std::string StateReader::text() {
    std::string text(countOf(1), '\0');
    for (char& byte : text) {
        byte = static_cast<char>(next());
    }
    return text;
}

bool StateReader::hasChecksum(const QString& name) {
    QFile file;
    openRegular(file, name);
    qint64 left = file.size() - static_cast<qint64>(kStateChecksum);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    while (left > 0) {
        const QByteArray block = file.read(std::min<qint64>(left, kBytesOfBlock));
        if (block.isEmpty()) {
            return false;
        }
        hash.addData(block);
        left -= block.size();
    }
    return left == 0 && file.read(kStateChecksum + 1) == hash.result();
}

}  // namespace rfu
