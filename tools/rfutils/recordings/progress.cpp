#include "recordings/progress.h"

#include <chrono>
#include <memory>

#include "analysis/support/progressText.h"
#include "support/progressLine.h"

#include <unistd.h>

namespace rfu::command {

namespace {

using Clock = std::chrono::steady_clock;

class Progress {
public:
    Progress() = default;
    ~Progress() { clearProgressLine(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(std::int64_t read, std::int64_t all) {
        const Clock::time_point now = Clock::now();
        if (read < read_) {  // another pass
            begin_ = now;
            next_ = now + kFirst;
        }
        read_ = read;
        if (now >= next_) {
            const std::chrono::duration<double> seconds = now - begin_;
            showProgressLine("rfutils: " + progressText(read, all, seconds.count()));
            next_ = now + kInterval;
        }
    }

private:
    static constexpr std::chrono::milliseconds kFirst{1000};
    static constexpr std::chrono::milliseconds kInterval{250};

    Clock::time_point begin_ = Clock::now();
    Clock::time_point next_ = begin_ + kFirst;
    std::int64_t read_ = 0;
};

}  // namespace

std::function<void(std::int64_t, std::int64_t)> progress() {
    if (::isatty(STDERR_FILENO) == 0) {
        return {};
    }
    return [shown = std::make_shared<Progress>()](std::int64_t read, std::int64_t all) {
        shown->show(read, all);
    };
}

}  // namespace rfu::command
