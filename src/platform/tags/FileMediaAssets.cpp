#include "platform/tags/FileMediaAssets.h"

#include "platform/tags/FileTags.h"
#include "platform/tags/ReadAhead.h"

#include <exception>
#include <optional>

namespace orvalen {

namespace {

Expected<FileTags> readFile(const std::string& path) {
    try {
        const auto file = openRegularFile(path);
        if (!file)
            return tl::make_unexpected(file.error());
        auto tags = readTags(**file);
        if ((*file)->error() != 0)
            return systemFailure((*file)->error());
        return tags;
    } catch (const std::exception& exception) {
        return failure(exception.what());
    }
}

class FileMediaAsset : public MediaAsset {
public:
    explicit FileMediaAsset(std::string path) : path_(std::move(path)) {}

    /// Fails also if a title or artist exists in the file but cannot be read.
    Expected<std::vector<MetadataItem>> commonMetadata() override {
        return tags().and_then([](const FileTags& tags) -> Expected<std::vector<MetadataItem>> {
            for (const MetadataItem& item : tags.common)
                if (!item.value)
                    return tl::make_unexpected(item.value.error());
            return tags.common;
        });
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

std::unique_ptr<MediaAsset> FileMediaAssets::open(const std::string& path) {
    return std::make_unique<FileMediaAsset>(path);
}

std::unique_ptr<MediaReadAhead> FileMediaAssets::startReadAhead() {
    return std::make_unique<ReadAhead>();
}

} // namespace orvalen
