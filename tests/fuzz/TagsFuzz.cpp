#include "Fuzz.h"
#include "core/Text.h"
#include "platform/tags/FileMediaAssets.h"
#include "platform/tags/FileTags.h"
#include "platform/tags/TagText.h"

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>

using namespace orvalen;
using fuzz::require;

namespace {

/// Counts the bytes that are read.
class CountedSource : public ByteSource {
public:
    explicit CountedSource(std::string bytes) : bytes_(std::move(bytes)) {}
    std::uint64_t size() const override { return bytes_.size(); }
    std::string read(std::uint64_t offset, std::size_t length) const override {
        std::string bytes = bytes_.read(offset, length);
        count_ += bytes.size();
        return bytes;
    }
    std::uint64_t count() const { return count_; }

private:
    MemorySource bytes_;
    mutable std::uint64_t count_ = 0;
};

void checkItems(const std::vector<MetadataItem>& items) {
    for (const MetadataItem& item : items)
        require(!item.value || !*item.value ||
                    (isValidUtf8(**item.value) && (*item.value)->size() <= 3 * longestText),
                "a value is an error, none, or valid UTF-8 of bounded length");
}

void checkTags(const FileTags& tags) {
    checkItems(tags.common);
    checkItems(tags.id3);
    for (const MetadataItem& item : tags.common)
        require(item.commonKey == "title" || item.commonKey == "artist", "a common item has a key");
}

/// Reads the bytes as a file of this container, even if their header says something else.
void readAsContainer(const std::string& bytes) {
    const CountedSource source(bytes);
    if (const auto tags = READ_TAGS(source))
        checkTags(*tags);
    // 8 kB: the bytes read around every byte of a very small file.
    require(source.count() <= 64 * source.size() + 8192, "no file is read over and over");
}

bool same(const std::vector<MetadataItem>& left, const std::vector<MetadataItem>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const MetadataItem& a, const MetadataItem& b) {
                          return a.identifier == b.identifier && a.commonKey == b.commonKey &&
                                 a.value.has_value() == b.value.has_value() &&
                                 (!a.value || *a.value == *b.value);
                      });
}

/// Reads the bytes as a scan would.
void readAsFile(const std::string& bytes) {
    static FileMediaAssets assets;
    static const int file = ::memfd_create("fuzz", MFD_CLOEXEC);
    require(::ftruncate(file, 0) == 0, "the file can be emptied");
    require(::pwrite(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()),
            "the file can be written");
    const auto asset = assets.open("/proc/self/fd/" + std::to_string(file));
    const auto common = asset->commonMetadata();
    const MemorySource memory(bytes);
    const auto tags = readTags(memory);
    const bool isReadable = tags && !bytes.empty() &&
                            std::all_of(tags->common.begin(), tags->common.end(),
                                        [](const auto& item) { return item.value.has_value(); });
    require(common.has_value() == isReadable, "a file is what its bytes are");
    if (!common)
        return;
    checkTags(*tags);
    require(same(*common, tags->common) && same(*asset->id3Metadata(), tags->id3),
            "and gives what they give");
}

} // namespace

void fuzz::tryInput(std::string_view input) {
    const std::string bytes(input);
    readAsContainer(bytes);
    readAsFile(bytes);
}
