#include "analysis/support/lineReader.h"

#include <cerrno>
#include <cstring>
#include <iterator>
#include <utility>

#include "analysis/support/compression.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/plainText.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace rfu {

namespace {

constexpr std::size_t kBlock = 65536;

/// Opens a file that reading may be stopped of: a FIFO that has no writer yet is not waited for.
int openToStop(const QString& file) {
    const int descriptor = openForReading(file, O_NONBLOCK);
    const int flags = descriptor < 0 ? -1 : ::fcntl(descriptor, F_GETFL);
    if (flags >= 0) {
        ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK);
    }
    return descriptor;
}

int openInput(const QString& file, const Waiting& waiting) {
    if (waiting.input >= 0) {
        return waiting.input;
    }
    if (file == kStandardInput) {
        return STDIN_FILENO;
    }
    const int descriptor = waiting.stop < 0 ? openForReading(file, 0) : openToStop(file);
    if (descriptor < 0) {
        throw InputError(file, std::strerror(errno));
    }
    return descriptor;
}

}  // namespace

LineReader::LineReader(const QString& file, Waiting waiting)
    : file_(file), descriptor_(openInput(file, waiting)), waiting_(std::move(waiting)) {}

LineReader::~LineReader() {
    if (descriptor_ != STDIN_FILENO && descriptor_ != waiting_.input) {
        ::close(descriptor_);
    }
}

/// Waits for both at once: a stop that came just before a read would not end it.
/// @return false where reading is to stop
bool LineReader::waitForInput() {
    if (waiting_.stop < 0) {
        return true;
    }
    pollfd watched[] = {{descriptor_, POLLIN, 0}, {waiting_.stop, POLLIN, 0}};
    while (::poll(watched, std::size(watched), -1) < 0) {
        if (errno != EINTR) {
            throw InputError(file_, std::strerror(errno));
        }
    }
    isStopped_ = watched[1].revents != 0;
    return !isStopped_;
}

/// Appends what is there, or waits for it.
/// @return false at the end
bool LineReader::read(std::string& bytes) {
    if (waiting_.before) {
        waiting_.before();
    }
    const std::size_t before = bytes.size();
    bytes.resize(before + kBlock);
    ssize_t got = 0;
    do {
        got = waitForInput() ? ::read(descriptor_, bytes.data() + before, kBlock) : 0;
    } while (got < 0 && errno == EINTR);
    bytes.resize(before + (got > 0 ? static_cast<std::size_t>(got) : 0));
    if (got < 0) {
        throw InputError(file_, std::strerror(errno));
    }
    if (got > 0 && waiting_.after) {
        waiting_.after(static_cast<std::size_t>(got));
    }
    return got > 0;
}

/// Unpacks what is there, or reads more.
/// @return false at the end
bool LineReader::unpack() {
    const std::size_t before = held_.size();
    held_.resize(before + kBlock);
    std::size_t got = 0;
    bool isMore = true;
    while ((got = unpacker_->unpack(unread_, held_.data() + before, kBlock)) == 0 && isMore) {
        packed_.clear();
        isMore = read(packed_);
        unread_ = packed_;
    }
    held_.resize(before + got);
    endsEarly_ = got == 0 && !isStopped_ && !unpacker_->isComplete();
    return got > 0;
}

bool LineReader::fill() {
    if (begin_ > 0) {
        held_.erase(0, begin_);
        scanned_ -= begin_;
        begin_ = 0;
    }
    if (held_.size() > kMaxLine) {
        throw InputError(file_, number_ + 1, "the line is longer than 1 MiB");
    }
    if (unpacker_) {
        return unpack();
    }
    const bool isMore = read(held_);
    const Packing* const packing = number_ == 0 ? packingOf(held_) : nullptr;
    if (packing == nullptr) {
        return isMore;
    }
    if (packing->makeUnpacker == nullptr) {
        throw CompressedInput(file_, packing->name);
    }
    unpacker_ = packing->makeUnpacker(file_);
    packed_.swap(held_);
    unread_ = packed_;
    scanned_ = 0;
    return unpack();
}

bool LineReader::next(std::string_view& line) {
    for (;;) {
        const std::size_t end = held_.find('\n', scanned_);
        const bool found = end != std::string::npos;
        if (!found && !atEnd_) {
            scanned_ = held_.size();
            atEnd_ = !fill();
            continue;
        }
        if (!found && (begin_ == held_.size() || isStopped_ || endsEarly_)) {
            return false;
        }
        const std::size_t stop = found ? end : held_.size();
        line = std::string_view(held_).substr(begin_, stop - begin_);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (number_ == 0 && line.substr(0, kUtf8Mark.size()) == kUtf8Mark) {
            line.remove_prefix(kUtf8Mark.size());
        }
        begin_ = scanned_ = found ? end + 1 : held_.size();
        ++number_;
        hasLineEnd_ = found;
        return true;
    }
}

}  // namespace rfu
