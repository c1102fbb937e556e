#pragma once

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace orvalen::test {

/// While it stands, no file of this process may grow past a few bytes: what a disk does that fills up midway.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before_), 0);
        const rlimit small{bytes, before_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

} // namespace orvalen::test
