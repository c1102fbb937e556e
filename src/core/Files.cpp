#include "core/Files.h"

#include "core/Descriptor.h"
#include "core/Uuid.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace orvalen {
namespace {

constexpr const char* notAFile = "Not a regular file";

/// 4 GiB. The JSON parser accepts no larger file.
constexpr off_t longestRead = off_t{4} << 30;

/// Spare capacity behind the bytes, so that a parser that reads past the end in blocks needs no copy.
constexpr std::size_t spareCapacity = 128;

Expected<std::string> readToEnd(int file, std::size_t expectedLength) {
    // Reads one byte more than expected to detect the end of the file. Some file systems report a size of 0.
    std::string bytes;
    bytes.reserve(expectedLength + 1 + spareCapacity);
    bytes.resize(expectedLength + 1);
    std::size_t length = 0;
    for (;;) {
        if (length == bytes.size())
            bytes.resize(2 * length + std::size_t{64} * 1024);
        const ssize_t got = ::read(file, bytes.data() + length, bytes.size() - length);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return systemFailure(errno);
        length += static_cast<std::size_t>(got);
        if (got == 0) {
            bytes.resize(length);
            return bytes;
        }
    }
}

Expected<void> writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return systemFailure(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

/// Reserves disk space before the first old byte is overwritten. If the file system cannot reserve space, a
/// full disk is noticed by the write.
Expected<void> reserveSpace(int file, off_t oldLength, off_t length) {
    if (length == 0 || ::fallocate(file, 0, 0, length) == 0)
        return {};
    const int error = errno;
    if (error != ENOSPC && error != EDQUOT && error != EFBIG)
        return {};
    // Releases the blocks that were reserved before the disk was full. If this fails too, the first error is
    // reported.
    if (::ftruncate(file, oldLength) != 0)
        errno = error;
    return systemFailure(error);
}

/// Replaces the content of an open file. A regular file stays unchanged if not a single byte could be
/// written.
Expected<void> replaceContent(Descriptor& file, std::string_view bytes) {
    struct stat before {};
    if (::fstat(file.number(), &before) != 0)
        return systemFailure(errno);
    if (S_ISFIFO(before.st_mode))
        return failure(notAFile);
    const bool hasLength = S_ISREG(before.st_mode);
    const auto length = static_cast<off_t>(bytes.size());
    if (hasLength)
        if (auto reserved = reserveSpace(file.number(), before.st_size, length); !reserved)
            return reserved;
    if (auto written = writeAll(file.number(), bytes); !written) {
        if (hasLength && ::lseek(file.number(), 0, SEEK_CUR) == 0)
            static_cast<void>(::ftruncate(file.number(), before.st_size) == 0);
        return written;
    }
    if ((hasLength && ::ftruncate(file.number(), length) != 0) || file.close() != 0)
        return systemFailure(errno);
    return {};
}

/// A new file beside the destination. The destructor deletes it unless commit() has renamed it.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& destination)
        : path_((std::filesystem::path(destination).parent_path() / (".orvalen-" + UUID::random().toString()))
                    .string()),
          file_(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {}
    ~TemporaryFile() {
        if (exists_)
            ::unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int file() const { return file_.number(); }
    bool isOpen() const { return exists_; }

    Expected<void> commit(const std::string& destination) {
        if (::fsync(file_.number()) != 0 || file_.close() != 0)
            return systemFailure(errno);
        if (::rename(path_.c_str(), destination.c_str()) != 0)
            return systemFailure(errno);
        exists_ = false;
        return {};
    }

private:
    std::string path_;
    Descriptor file_;
    bool exists_ = file_.isOpen();
};

/// Renaming a file over a device or pipe would remove the device or pipe for all programs. Such a path is
/// passed to writeWholeFile() instead.
bool isDeviceOrPipe(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

/// Follows symbolic links, so that writing replaces the target and keeps the link. The target need not exist.
std::string followLinks(const std::string& path) {
    std::error_code error;
    std::filesystem::path place = path;
    for (int links = 0; links < 40 && std::filesystem::is_symlink(place, error); ++links)
        place = place.parent_path() / std::filesystem::read_symlink(place, error);
    return place.string();
}

/// Returns the reason why a file could not be opened for writing. If its folder is missing because a parent
/// folder is not writable, returns that permission error instead of "No such file".
Expected<void> openFailure(const std::string& path, int error) {
    std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::error_code ignored;
    while (folder.has_relative_path() && !std::filesystem::exists(folder, ignored))
        folder = folder.parent_path();
    if (error == ENOENT && ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        error = errno;
    return systemFailure(error);
}

/// Copies the permissions of the replaced file. Ignores file systems without permissions.
void keepPermissions(int file, const std::string& destination) {
    struct stat status {};
    if (::stat(destination.c_str(), &status) == 0)
        static_cast<void>(::fchmod(file, status.st_mode & 0777));
}

} // namespace

Expected<std::string> readWholeFile(const std::string& path) {
    // O_NONBLOCK: opening a pipe would otherwise wait for a writer.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen())
        return errno == ENXIO ? failure(notAFile) : systemFailure(errno); // ENXIO: a socket
    struct stat status {};
    if (::fstat(file.number(), &status) != 0)
        return systemFailure(errno);
    if (S_ISDIR(status.st_mode))
        return systemFailure(EISDIR);
    if (!S_ISREG(status.st_mode))
        return failure(notAFile);
    if (status.st_size > longestRead)
        return systemFailure(EFBIG);
    try {
        return readToEnd(file.number(), static_cast<std::size_t>(status.st_size));
    } catch (const std::bad_alloc&) {
        return systemFailure(ENOMEM);
    }
}

Expected<void> writeWholeFile(const std::string& path, std::string_view bytes) {
    const std::string place = followLinks(path);
    const bool isNew = ::access(place.c_str(), F_OK) != 0 && errno == ENOENT;
    // O_NONBLOCK, as in readWholeFile().
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666));
    if (!file.isOpen())
        return errno == ENXIO ? failure(notAFile) : openFailure(place, errno);
    auto written = replaceContent(file, bytes);
    if (!written && isNew)
        ::unlink(place.c_str()); // leaves no incomplete file where there was none
    return written;
}

Expected<void> writeFileAtomically(const std::string& path, std::string_view bytes) {
    const std::string destination = followLinks(path);
    if (isDeviceOrPipe(destination))
        return writeWholeFile(destination, bytes);
    TemporaryFile temporary(destination);
    if (!temporary.isOpen())
        return systemFailure(errno);
    if (auto written = writeAll(temporary.file(), bytes); !written)
        return written;
    keepPermissions(temporary.file(), destination);
    return temporary.commit(destination);
}

bool createFolder(const std::string& path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        return true;
    const auto parent = std::filesystem::path(path).parent_path();
    if (!parent.empty() && parent != path)
        createFolder(parent.string());
    ::mkdir(path.c_str(), 0700);
    return std::filesystem::is_directory(path, error);
}

} // namespace orvalen
