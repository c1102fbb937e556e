#pragma once

#include <string>
#include <string_view>

namespace orvalen::test {

/// A real folder. The destructor deletes it with its content, whatever the permissions.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string path(std::string_view name) const { return path_ + "/" + std::string(name); }

    /// Creates the file and its folders. Returns its path.
    std::string write(std::string_view name, std::string_view bytes = {}) const;
    std::string makeFolder(std::string_view name) const;
    /// Returns the bytes of the file. The test fails if it cannot be read.
    std::string read(std::string_view name) const;
    bool exists(std::string_view name) const;

private:
    std::string path_;
};

} // namespace orvalen::test
