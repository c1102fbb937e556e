#include "platform/system/XdgUserFolders.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace orvalen::test {
namespace {

std::optional<std::string> variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

void setVariable(const char* name, const std::optional<std::string>& value) {
    if (value)
        ::setenv(name, value->c_str(), 1);
    else
        ::unsetenv(name);
}

TEST(XdgUserFolders, PrefersTheDataFolderThenTheHomeThenTheUserList) {
    const passwd* user = ::getpwuid(::getuid());
    ASSERT_NE(user, nullptr);
    const std::string listed = std::string(user->pw_dir) + "/.local/share";
    struct Case {
        std::optional<std::string> dataHome;
        std::optional<std::string> home;
        std::string expected;
    };
    const Case cases[] = {
        {"/data/dj", "/home/dj", "/data/dj"},
        {"/data/dj//", "/home/dj", "/data/dj"},
        {{}, "/home/dj", "/home/dj/.local/share"},
        {{}, "/home/dj/", "/home/dj/.local/share"},
        {"", "/home/dj", "/home/dj/.local/share"},
        {"data/dj", "/home/dj", "/home/dj/.local/share"}, // a relative one is to be ignored
        {{}, "dj", listed},
    };
    const auto dataHomeBefore = variable("XDG_DATA_HOME");
    const auto homeBefore = variable("HOME");
    for (const auto& [dataHome, home, expected] : cases) {
        setVariable("XDG_DATA_HOME", dataHome);
        setVariable("HOME", home);
        EXPECT_EQ(XdgUserFolders().applicationSupport(), expected)
            << dataHome.value_or("none") << ", " << home.value_or("none");
    }
    setVariable("XDG_DATA_HOME", dataHomeBefore);
    setVariable("HOME", homeBefore);
}

} // namespace
} // namespace orvalen::test
