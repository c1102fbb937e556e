#pragma once

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvalen::test {

/// While this object exists, permissions hold even if the tests run as root. The ordinary user may read the
/// folder.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const TemporaryFolder& folder) {
        EXPECT_EQ(::chmod(folder.path().c_str(), 0755), 0);
        EXPECT_TRUE(!isRoot_ || ::seteuid(65534) == 0);
    }
    ~OrdinaryUser() { EXPECT_TRUE(!isRoot_ || ::seteuid(0) == 0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    const bool isRoot_ = ::geteuid() == 0;
};

} // namespace orvalen::test
