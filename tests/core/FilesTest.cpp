#include "core/Files.h"

#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvalen::test {
namespace {

namespace fs = std::filesystem;

std::string errorOf(const Expected<void>& result) {
    return result ? "" : result.error().description;
}

std::string readError(const std::string& path) {
    const auto bytes = readWholeFile(path);
    return bytes ? "" : bytes.error().description;
}

std::size_t entries(const TemporaryFolder& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
}

/// A socket in the file system, as many programs keep one.
class LocalSocket {
public:
    explicit LocalSocket(const std::string& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(number_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0) << path;
    }
    ~LocalSocket() { ::close(number_); }
    LocalSocket(const LocalSocket&) = delete;
    LocalSocket& operator=(const LocalSocket&) = delete;

private:
    int number_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

class Files : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(Files, ReadsEveryByteOfAnyLength) {
    for (const std::size_t length : {0U, 1U, 4096U, 65536U, 200'001U}) {
        std::string bytes(length, '\0');
        for (std::size_t i = 0; i < length; ++i)
            bytes[i] = static_cast<char>(i * 31);
        EXPECT_EQ(readWholeFile(folder.write("file", bytes)).value(), bytes) << length;
    }
}

TEST_F(Files, ReadsFilesThatHideTheirSize) {
    const auto environment = readWholeFile("/proc/self/environ");
    ASSERT_TRUE(environment.has_value());
    EXPECT_NE(environment->find("PATH="), std::string::npos);
    const auto mounts = readWholeFile("/proc/self/maps"); // longer than a page, given in pieces
    ASSERT_TRUE(mounts.has_value());
    EXPECT_GT(mounts->size(), 4096U);
    EXPECT_EQ(mounts->back(), '\n');
}

TEST_F(Files, SaysWhyAFileCannotBeRead) {
    fs::create_symlink(folder.path("loop"), folder.path("loop"));
    EXPECT_EQ(readError(folder.path("gone")), "No such file or directory");
    EXPECT_EQ(readError(folder.path()), "Is a directory");
    EXPECT_EQ(readError(folder.write("file") + "/below"), "Not a directory");
    EXPECT_EQ(readError(folder.path("loop")), "Too many levels of symbolic links");
    EXPECT_EQ(readError(folder.path(std::string(300, 'x'))), "File name too long");
    EXPECT_EQ(readError(""), "No such file or directory");
    std::filesystem::resize_file(folder.write("endless"), std::uintmax_t{5} << 30);
    EXPECT_EQ(readError(folder.path("endless")), "File too large");
}

TEST_F(Files, DoNotWaitForWhatIsNoFile) {
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    const LocalSocket socket(folder.path("socket"));
    fs::create_symlink("pipe", folder.path("link"));
    for (const std::string& path : {folder.path("pipe"), folder.path("link"), folder.path("socket"),
                                    std::string("/dev/zero"), std::string("/dev/null")})
        EXPECT_EQ(readError(path), "Not a regular file") << path;
    // Whether somebody would read from it or not.
    for (const bool read : {false, true}) {
        const int reader = read ? ::open(folder.path("pipe").c_str(), O_RDONLY | O_NONBLOCK) : -1;
        for (const std::string& path : {folder.path("pipe"), folder.path("link"), folder.path("socket")}) {
            EXPECT_EQ(errorOf(writeWholeFile(path, "x")), "Not a regular file") << path;
            EXPECT_EQ(errorOf(writeFileAtomically(path, "x")), "Not a regular file") << path;
        }
        if (reader >= 0)
            ::close(reader);
    }
    EXPECT_TRUE(fs::is_fifo(folder.path("pipe")));
    EXPECT_EQ(entries(folder), 3U);
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
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    struct stat status {};
    ASSERT_EQ(::stat(folder.path("real").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_P(WritingFiles, CreateTheFileBehindALinkThatLedNowhere) {
    fs::create_symlink("later", folder.path("link"));
    ASSERT_EQ(errorOf(write(folder.path("link"), "new")), "");
    EXPECT_EQ(folder.read("later"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
}

TEST_P(WritingFiles, SayWhyTheyFailAndLeaveNothingBeside) {
    folder.write("file", "kept");
    folder.makeFolder("folder");
    EXPECT_EQ(errorOf(write(folder.path("folder"), "x")), "Is a directory");
    EXPECT_EQ(errorOf(write(folder.path("file/below"), "x")), "Not a directory");
    EXPECT_EQ(errorOf(write(folder.path("gone/below"), "x")), "No such file or directory");
    EXPECT_EQ(errorOf(write(folder.path(std::string(300, 'x')), "x")), "File name too long");
    EXPECT_EQ(folder.read("file"), "kept");
    EXPECT_EQ(entries(folder), 2U);
}

TEST_P(WritingFiles, AFullDiskIsAnError) {
    EXPECT_EQ(errorOf(write("/dev/full", "x")), "No space left on device");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(Files, AnAtomicWriteOverAReaderLeavesItTheOldBytes) {
    const std::string path = folder.write("list.m3u", "old");
    fs::create_hard_link(path, folder.path("as it was"));
    ASSERT_EQ(errorOf(writeFileAtomically(path, "new")), "");
    EXPECT_EQ(folder.read("as it was"), "old");
    EXPECT_EQ(folder.read("list.m3u"), "new");
}

/// The permissions, under whatever mask the user has.
unsigned modeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 0777;
}

TEST_F(Files, AreForWhomTheUserLikesAndFoldersForTheUserAlone) {
    const mode_t before = ::umask(0002);
    ASSERT_TRUE(createFolder(folder.path("ours/support")));
    ASSERT_TRUE(writeWholeFile(folder.path("plain"), "x"));
    ASSERT_TRUE(writeFileAtomically(folder.path("atomic"), "x"));
    ::umask(0077);
    ASSERT_TRUE(writeWholeFile(folder.path("secret"), "x"));
    ASSERT_TRUE(writeFileAtomically(folder.path("secret list"), "x"));
    ::umask(before);
    EXPECT_EQ(modeOf(folder.path("ours")), 0700U);
    EXPECT_EQ(modeOf(folder.path("ours/support")), 0700U);
    EXPECT_EQ(modeOf(folder.path("plain")), 0664U);
    EXPECT_EQ(modeOf(folder.path("atomic")), 0664U);
    EXPECT_EQ(modeOf(folder.path("secret")), 0600U);
    EXPECT_EQ(modeOf(folder.path("secret list")), 0600U);
}

TEST_F(Files, CreatesFoldersWithTheirParents) {
    EXPECT_TRUE(createFolder(folder.path("a/b/c")));
    EXPECT_TRUE(createFolder(folder.path("a/b/c")));
    EXPECT_TRUE(fs::is_directory(folder.path("a/b/c")));
    fs::create_directory_symlink(folder.path("a"), folder.path("link"));
    EXPECT_TRUE(createFolder(folder.path("link")));
    folder.write("file");
    for (const std::string& path : {folder.path("file"), folder.path("file/below"), std::string("/proc/new"),
                                    folder.path(std::string(300, 'x')), std::string()})
        EXPECT_FALSE(createFolder(path)) << path;
}

} // namespace
} // namespace orvalen::test
