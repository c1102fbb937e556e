#include "core/Files.h"

#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvalen::test {
namespace {

namespace fs = std::filesystem;

template <typename Value>
std::string errorOf(const Expected<Value>& result) {
    return result ? "" : result.error().description;
}

std::size_t entries(const TemporaryFolder& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
}

unsigned modeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 0777;
}

class Files : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(Files, AreReadWholeOrSayWhyNot) {
    const auto maps = readWholeFile("/proc/self/maps"); // reports a size of 0 and is returned in parts
    ASSERT_TRUE(maps && maps->size() > 4096);
    EXPECT_EQ(maps->back(), '\n');
    EXPECT_EQ(errorOf(readWholeFile(folder.path("gone"))), "No such file or directory");
    EXPECT_EQ(errorOf(readWholeFile(folder.path())), "Is a directory");
    fs::resize_file(folder.write("endless"), std::uintmax_t{5} << 30);
    EXPECT_EQ(errorOf(readWholeFile(folder.path("endless"))), "File too large");
}

TEST_F(Files, DoNotWaitForWhatIsNoFile) {
    const std::string pipe = folder.path("pipe");
    const std::string socket = folder.path("socket");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ASSERT_EQ(::mknod(socket.c_str(), S_IFSOCK | 0600, 0), 0);
    for (const std::string& path : {pipe, socket, std::string("/dev/zero")})
        EXPECT_EQ(errorOf(readWholeFile(path)), "Not a regular file") << path;
    const auto expectRefused = [&] {
        for (const std::string& path : {pipe, socket}) {
            EXPECT_EQ(errorOf(writeWholeFile(path, "x")), "Not a regular file") << path;
            EXPECT_EQ(errorOf(writeFileAtomically(path, "x")), "Not a regular file") << path;
        }
    };
    expectRefused();
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    expectRefused(); // now the pipe has a reader
    ::close(reader);
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(entries(folder), 2U);
}

using Write = Expected<void> (*)(const std::string&, std::string_view);
class WritingFiles : public testing::TestWithParam<Write> {
protected:
    Expected<void> write(const std::string& path, std::string_view bytes) { return GetParam()(path, bytes); }
    TemporaryFolder folder;
};
INSTANTIATE_TEST_SUITE_P(BothWays, WritingFiles, testing::Values(&writeWholeFile, &writeFileAtomically),
                         [](const auto& way) { return way.index == 0 ? "plain" : "atomic"; });

TEST_P(WritingFiles, ReplaceTheWholeContentAndLeaveNothingBeside) {
    const std::string path = folder.path("Größe.m3u8");
    for (const std::string& bytes : {std::string(100'000, 'x'), std::string("a\0b", 3), std::string()}) {
        ASSERT_EQ(errorOf(write(path, bytes)), "");
        EXPECT_EQ(folder.read("Größe.m3u8"), bytes);
    }
    EXPECT_EQ(entries(folder), 1U);
}

TEST_P(WritingFiles, KeepPermissionsAndLinksOfTheFileTheyReplace) {
    folder.write("real", "old");
    fs::create_symlink("real", folder.path("link"));
    ASSERT_EQ(::chmod(folder.path("real").c_str(), 0640), 0);
    ASSERT_EQ(errorOf(write(folder.path("link"), "new")), "");
    EXPECT_EQ(folder.read("real"), "new");
    EXPECT_EQ(modeOf(folder.path("real")), 0640U);

    fs::create_symlink("later", folder.path("dangling"));
    ASSERT_EQ(errorOf(write(folder.path("dangling"), "new")), "");
    EXPECT_EQ(folder.read("later"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.path("link")) && fs::is_symlink(folder.path("dangling")));
}

TEST_P(WritingFiles, SayWhyTheyFailAndLeaveNothingBeside) {
    folder.makeFolder("folder");
    EXPECT_EQ(errorOf(write(folder.path("folder"), "x")), "Is a directory");
    EXPECT_EQ(errorOf(write(folder.path("gone/below"), "x")), "No such file or directory");
    EXPECT_EQ(entries(folder), 1U);
    EXPECT_EQ(errorOf(write("/dev/full", "x")), "No space left on device");
    EXPECT_TRUE(fs::is_character_file("/dev/full")) << "a device is written into, never replaced";
}

TEST_F(Files, SayThatAMissingFolderMayNotBeCreated) {
    folder.makeFolder("read-only");
    ASSERT_EQ(::chmod(folder.path("read-only").c_str(), 0555), 0);
    const OrdinaryUser user(folder);
    EXPECT_EQ(errorOf(writeWholeFile(folder.path("read-only/Orvalen/library.orvl"), "x")),
              "Permission denied");
}

TEST_F(Files, AreForWhomTheUserLikesAndFoldersForTheUserAlone) {
    const mode_t before = ::umask(0027);
    for (int time = 0; time < 2; ++time)
        EXPECT_TRUE(createFolder(folder.path("ours/support")));
    EXPECT_TRUE(writeWholeFile(folder.path("plain"), "x"));
    EXPECT_TRUE(writeFileAtomically(folder.path("atomic"), "x"));
    ::umask(before);
    for (const auto& [name, mode] :
         {std::pair("ours", 0700U), {"ours/support", 0700U}, {"plain", 0640U}, {"atomic", 0640U}})
        EXPECT_EQ(modeOf(folder.path(name)), mode) << name;
    for (const std::string& path : {folder.path("plain"), folder.path("plain/below"), std::string()})
        EXPECT_FALSE(createFolder(path)) << path;
}

} // namespace
} // namespace orvalen::test
