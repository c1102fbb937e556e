#include "Fuzz.h"
#include "core/Text.h"
#include "platform/tags/Id3Tag.h"
#include "platform/tags/TagLibMediaAssets.h"
#include "platform/tags/TagReading.h"

#include <sys/mman.h>
#include <unistd.h>

using namespace orvalen;
using fuzz::require;

namespace {

/// Counts what is asked for.
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
        require(item.value && (!*item.value || isValidUtf8(**item.value)), "a value is valid UTF-8 or none");
}

void checkTags(const FileTags& tags) {
    checkItems(tags.common);
    checkItems(tags.id3);
    for (const MetadataItem& item : tags.common)
        require(item.commonKey == "title" || item.commonKey == "artist", "a common item has a key");
}

/// The bytes as a file of this container, whatever their head says.
void readAsContainer(const std::string& bytes) {
    const CountedSource source(bytes);
    const Expected<TagPlaces> places = FIND_TAGS(source);
    if (places)
        checkTags(readTags(source, *places));
    // Eight kilobytes: what is looked at round every byte of a tiny file.
    require(source.count() <= 64 * source.size() + 8192, "no file is read over and over");
    if (!places || !places->id3)
        return;
    const std::string small = smallId3Tag(source, *places->id3);
    require(small.empty() || isId3Header(small), "what is left of a tag is a tag");
    require(smallId3Tag(MemorySource(small), 0) == small, "what is left of a tag is all wanted");
}

bool same(const std::vector<MetadataItem>& left, const std::vector<MetadataItem>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const MetadataItem& a, const MetadataItem& b) {
                          return a.identifier == b.identifier && a.commonKey == b.commonKey &&
                                 *a.value == *b.value;
                      });
}

/// The bytes as a file that a scan comes across.
void readAsFile(const std::string& bytes) {
    static TagLibMediaAssets assets;
    static const int file = ::memfd_create("fuzz", MFD_CLOEXEC);
    require(::ftruncate(file, 0) == 0, "the file can be emptied");
    require(::pwrite(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()),
            "the file can be written");
    const auto asset = assets.open("/proc/self/fd/" + std::to_string(file));
    const auto common = asset->commonMetadata();
    const MemorySource memory(bytes);
    const auto places = findTags(memory);
    require(common.has_value() == (places.has_value() && !bytes.empty()), "a file is what its bytes are");
    if (!common)
        return;
    const FileTags tags = readTags(memory, *places);
    checkTags(tags);
    require(same(*common, tags.common) && same(*asset->id3Metadata(), tags.id3), "and gives what they give");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(fuzz::text(data, size));
    readAsContainer(bytes);
    readAsFile(bytes);
    return 0;
}
