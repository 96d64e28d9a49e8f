#pragma once

#include <unistd.h>

/// Root reads every file: while this lives, its program is nobody instead. Without root's rights
/// nothing changes.
class Unprivileged {
public:
    Unprivileged() : before_(geteuid()) {
        if (before_ == 0) {
            isNobody_ = seteuid(kNobody) == 0;
        }
    }
    ~Unprivileged() {
        if (isNobody_ && seteuid(before_) != 0) {
            _exit(1);  // what follows would not be what it says
        }
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

    /// Whether a file without permission cannot be read now.
    bool holds() const { return before_ != 0 || isNobody_; }

private:
    static constexpr uid_t kNobody = 65534;

    const uid_t before_;
    bool isNobody_ = false;
};
