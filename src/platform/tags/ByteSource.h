#pragma once

#include "core/Error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace orvalen {

/// A part of a file, in bytes.
struct ByteRange {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;

    std::uint64_t end() const { return offset + length; }
};

/// Bytes that can be read at any offset. Use from one thread at a time.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t size() const = 0;
    /// Returns the bytes at the offset; fewer at the end of the source or after an error.
    virtual std::string read(std::uint64_t offset, std::size_t length) const = 0;
    /// Returns errno of the last failed read, or 0. After an error, do not use what was decoded from the
    /// bytes.
    virtual int error() const { return 0; }
};

class MemorySource : public ByteSource {
public:
    explicit MemorySource(std::string bytes) : bytes_(std::move(bytes)) {}
    std::uint64_t size() const override { return bytes_.size(); }
    std::string read(std::uint64_t offset, std::size_t length) const override;

private:
    std::string bytes_;
};

/// Opens a regular file that is not empty. Fails for anything else without opening it. Keeps a buffer of
/// 4 kB, so that small reads close to each other need one system call.
Expected<std::unique_ptr<ByteSource>> openRegularFile(const std::string& path);

// Return the number in the first bytes. Missing bytes count as 0.
std::uint32_t bigEndian32(std::string_view bytes);
std::uint64_t bigEndian64(std::string_view bytes);
std::uint32_t littleEndian32(std::string_view bytes);

} // namespace orvalen
