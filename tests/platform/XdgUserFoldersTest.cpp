#include "platform/system/XdgUserFolders.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace orvalen::test {
namespace {

/// Sets or unsets an environment variable and puts the old value back.
class Environment {
public:
    Environment(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name))
            old_ = old;
        set(value);
    }
    ~Environment() { set(old_ ? old_->c_str() : nullptr); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    void set(const char* value) const {
        if (value != nullptr)
            ::setenv(name_, value, 1);
        else
            ::unsetenv(name_);
    }
    const char* name_;
    std::optional<std::string> old_;
};

TEST(XdgUserFolders, PrefersTheDataFolderThenTheHomeThenTheUserList) {
    const passwd* user = ::getpwuid(::getuid());
    ASSERT_NE(user, nullptr);
    const std::string listed = std::string(user->pw_dir) + "/.local/share";
    struct Case {
        const char* dataHome;
        const char* home;
        std::string expected;
    };
    const Case cases[] = {
        {"/data/dj", "/home/dj", "/data/dj"},
        {"/data/dj//", "/home/dj", "/data/dj"},
        {nullptr, "/home/dj", "/home/dj/.local/share"},
        {nullptr, "/home/dj/", "/home/dj/.local/share"},
        {"", "/home/dj", "/home/dj/.local/share"},
        {"data/dj", "/home/dj", "/home/dj/.local/share"}, // a relative one is to be ignored
        {nullptr, "dj", listed},
    };
    for (const auto& [dataHome, home, expected] : cases) {
        const Environment first("XDG_DATA_HOME", dataHome);
        const Environment second("HOME", home);
        EXPECT_EQ(XdgUserFolders().applicationSupport(), expected)
            << (dataHome != nullptr ? dataHome : "none") << ", " << (home != nullptr ? home : "none");
    }
}

} // namespace
} // namespace orvalen::test
