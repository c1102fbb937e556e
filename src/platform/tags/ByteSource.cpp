#include "platform/tags/ByteSource.h"

#include "core/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace orvalen {

namespace {

/// The smallest read in bytes. One page mostly contains the start of a file with its tags.
constexpr std::size_t windowSize = 4096;

class RegularFile : public ByteSource {
public:
    RegularFile(int descriptor, std::uint64_t size) : file_(descriptor), size_(size) {}

    std::uint64_t size() const override { return size_; }

    std::string read(std::uint64_t offset, std::size_t length) const override {
        if (offset >= size_)
            return {};
        length = static_cast<std::size_t>(std::min<std::uint64_t>(length, size_ - offset));
        if (length > windowSize)
            return readFromDisk(offset, length);
        if (offset < windowOffset_ || offset + length > windowOffset_ + window_.size()) {
            window_ = readFromDisk(offset, windowSize);
            windowOffset_ = offset;
        }
        return window_.substr(offset - windowOffset_, length);
    }

    int error() const override { return error_; }

private:
    std::string readFromDisk(std::uint64_t offset, std::size_t length) const {
        std::string bytes(length, '\0');
        std::size_t done = 0;
        while (done < length) {
            const ssize_t count = ::pread(file_.number(), bytes.data() + done, length - done,
                                          static_cast<off_t>(offset + done));
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                error_ = errno;
            if (count <= 0)
                break;
            done += static_cast<std::size_t>(count);
        }
        bytes.resize(done);
        return bytes;
    }

    Descriptor file_;
    std::uint64_t size_;
    mutable std::uint64_t windowOffset_ = 0;
    mutable std::string window_;
    mutable int error_ = 0;
};

std::uint64_t number(std::string_view bytes, std::size_t count, bool bigEndian) {
    std::uint64_t result = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = bigEndian ? i : count - 1 - i;
        result = result << 8 | (place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0U);
    }
    return result;
}

} // namespace

std::string MemorySource::read(std::uint64_t offset, std::size_t length) const {
    return offset < bytes_.size() ? bytes_.substr(offset, length) : std::string();
}

Expected<std::unique_ptr<ByteSource>> openRegularFile(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return systemFailure(errno);
    if (!S_ISREG(status.st_mode))
        return failure(S_ISDIR(status.st_mode) ? "Is a directory" : "Not a regular file");
    if (status.st_size == 0)
        return failure("The file is empty");
    // O_NONBLOCK, in case a pipe has replaced the file meanwhile.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return systemFailure(errno);
    return std::make_unique<RegularFile>(descriptor, static_cast<std::uint64_t>(status.st_size));
}

std::uint32_t bigEndian32(std::string_view bytes) {
    return static_cast<std::uint32_t>(number(bytes, 4, true));
}

std::uint64_t bigEndian64(std::string_view bytes) {
    return number(bytes, 8, true);
}

std::uint32_t littleEndian32(std::string_view bytes) {
    return static_cast<std::uint32_t>(number(bytes, 4, false));
}

} // namespace orvalen
