#include "platform/tags/TagLibMediaAssets.h"

#include "platform/tags/TagLibText.h"
#include "platform/tags/TagReading.h"

#include <exception>
#include <optional>
#include <taglib/infotag.h>
#include <taglib/tdebuglistener.h>

namespace orvalen {

namespace {

class SilentListener : public TagLib::DebugListener {
    void printMessage(const TagLib::String&) override {}
};

// TagLib's base has no virtual destructor, and nothing of ours is ever destroyed through it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class InfoText final : public TagLib::RIFF::Info::StringHandler {
    TagLib::String parse(const TagLib::ByteVector& bytes) const override { return fromUtf8OrLatin1(bytes); }
};
#pragma GCC diagnostic pop

Expected<FileTags> readFile(const std::string& path) {
    try {
        const auto file = openRegularFile(path);
        if (!file)
            return tl::make_unexpected(file.error());
        const auto places = findTags(**file);
        auto tags = places.map([&](const TagPlaces& found) { return readTags(**file, found); });
        if ((*file)->error() != 0)
            return systemFailure((*file)->error());
        return tags;
    } catch (const std::exception& exception) {
        return failure(exception.what());
    }
}

class TagLibMediaAsset : public MediaAsset {
public:
    explicit TagLibMediaAsset(std::string path) : path_(std::move(path)) {}

    Expected<std::vector<MetadataItem>> commonMetadata() override {
        return tags().map([](const FileTags& tags) { return tags.common; });
    }
    Expected<std::vector<std::string>> availableFormats() override {
        return tags().map([](const FileTags& tags) { return tags.formats; });
    }
    Expected<std::vector<MetadataItem>> id3Metadata() override {
        return tags().map([](const FileTags& tags) { return tags.id3; });
    }

private:
    const Expected<FileTags>& tags() {
        if (!tags_)
            tags_ = readFile(path_);
        return *tags_;
    }

    std::string path_;
    std::optional<Expected<FileTags>> tags_;
};

} // namespace

TagLibMediaAssets::TagLibMediaAssets() {
    // TagLib keeps the pointers for good.
    static SilentListener silence;
    static const InfoText infoText;
    TagLib::setDebugListener(&silence);
    TagLib::RIFF::Info::Tag::setStringHandler(&infoText);
}

std::unique_ptr<MediaAsset> TagLibMediaAssets::open(const std::string& path) {
    return std::make_unique<TagLibMediaAsset>(path);
}

} // namespace orvalen
