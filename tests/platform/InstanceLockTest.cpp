#include "platform/system/InstanceLock.h"

#include "support/TemporaryFolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

namespace orvalen::test {
namespace {

TEST(InstanceLock, IsFreeAgainWhenItsOwnerIsKilled) {
    const TemporaryFolder folder;
    const std::string file = folder.path("lock");
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t owner = ::fork();
    if (owner == 0) {
        const InstanceLock lock(file);
        const char state = lock.heldByAnother() ? 'h' : 'f';
        while (::write(ready[1], &state, 1) == 1)
            ::pause();
    }
    char state = 0;
    ASSERT_EQ(::read(ready[0], &state, 1), 1);
    EXPECT_EQ(state, 'f');
    EXPECT_TRUE(InstanceLock(file).heldByAnother());
    ::kill(owner, SIGKILL);
    ::waitpid(owner, nullptr, 0);
    EXPECT_FALSE(InstanceLock(file).heldByAnother());
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST(InstanceLock, LetsTheProgramGoOnWhereNoFileCanBeMade) {
    EXPECT_FALSE(InstanceLock("/proc/missing/lock").heldByAnother());
}

} // namespace
} // namespace orvalen::test
