#include "support/TemporaryFolder.h"

#include "core/Files.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>

namespace orvalen::test {
namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "orvalen-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    path_ = fs::canonical(pattern).string();
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    for (fs::recursive_directory_iterator it(path_, fs::directory_options::skip_permission_denied, ignored),
         end;
         it != end; it.increment(ignored))
        if (it->is_directory(ignored) && !it->is_symlink(ignored))
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::write(std::string_view name, std::string_view bytes) const {
    const std::string file = path(name);
    fs::create_directories(fs::path(file).parent_path());
    const auto written = writeWholeFile(file, bytes);
    EXPECT_TRUE(written.has_value()) << file;
    return file;
}

std::string TemporaryFolder::makeFolder(std::string_view name) const {
    fs::create_directories(path(name));
    return path(name);
}

std::string TemporaryFolder::read(std::string_view name) const {
    auto bytes = readWholeFile(path(name));
    EXPECT_TRUE(bytes.has_value()) << path(name);
    return bytes.value_or("");
}

bool TemporaryFolder::exists(std::string_view name) const {
    return fs::exists(path(name));
}

} // namespace orvalen::test
