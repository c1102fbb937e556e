#pragma once

#include "core/Error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace orvalen {

/// A stretch of a file.
struct ByteRange {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;

    std::uint64_t end() const { return offset + length; }
};

/// Bytes that are read at any place. One thread at a time.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t size() const = 0;
    /// The bytes at the offset, fewer where the source ends or cannot be read.
    virtual std::string read(std::uint64_t offset, std::size_t length) const = 0;
    /// The system's number for why a read failed; 0: none has. What was made of the bytes is then worth
    /// nothing.
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

/// Opens a regular file that is not empty. Anything else is an error: a folder, a pipe or a device, which is
/// not even opened. Small reads are served from the last few kilobytes read.
Expected<std::unique_ptr<ByteSource>> openRegularFile(const std::string& path);

// Numbers in the first bytes of a text; missing bytes count as 0.
std::uint32_t bigEndian32(std::string_view bytes);
std::uint64_t bigEndian64(std::string_view bytes);
std::uint32_t littleEndian32(std::string_view bytes);

} // namespace orvalen
