#pragma once

#include <unistd.h>

/// Makes a process of root one of nobody during its lifetime, because root can read every file. Does nothing in other
/// processes.
class Unprivileged {
public:
    Unprivileged() : before_(geteuid()) {
        if (before_ == 0) {
            isNobody_ = seteuid(kNobody) == 0;
        }
    }
    ~Unprivileged() {
        if (isNobody_ && seteuid(before_) != 0) {
            _exit(1);  // the other tests would run as nobody
        }
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

    /// Whether file permissions apply to the process now.
    bool holds() const { return before_ != 0 || isNobody_; }

private:
    static constexpr uid_t kNobody = 65534;

    const uid_t before_;
    bool isNobody_ = false;
};
