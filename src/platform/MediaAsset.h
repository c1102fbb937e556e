#pragma once

#include "core/Error.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// One tag of a file. `value` is nullopt if the tag has no text, or an error if it cannot be read.
struct MetadataItem {
    std::string identifier; ///< for an ID3 frame, ‘id3/’ and its name, such as ‘id3/TBPM’; may be empty
    std::string commonKey; ///< "title", "artist" or empty
    Expected<std::optional<std::string>> value;
};

/// The entry of availableFormats() for an ID3 tag.
inline constexpr std::string_view id3Format = "org.id3";

/// The tags of one audio file. Every call may read the file and may fail. Texts are valid UTF-8.
class MediaAsset {
public:
    virtual ~MediaAsset() = default;
    /// Returns the tags with a common key, in the same form for all formats. Fails if the file is not
    /// readable media.
    virtual Expected<std::vector<MetadataItem>> commonMetadata() = 0;
    virtual Expected<std::vector<std::string>> availableFormats() = 0;
    virtual Expected<std::vector<MetadataItem>> id3Metadata() = 0;
};

/// Reads files into the system's cache before a reader opens them. Errors are ignored. One thread. No call
/// waits for a drive.
class MediaReadAhead {
public:
    virtual ~MediaReadAhead() = default;
    /// The largest number of expected files that the reader has not finished.
    static constexpr std::size_t mostFiles = 256;

    /// Adds a file that the reader will open after those added before.
    virtual void expect(const std::string& path) = 0;
    /// Reports that the reader has finished the next expected file.
    virtual void passOne() = 0;
};

/// Opens assets. Thread-safe. Use each asset on one thread.
class MediaAssets {
public:
    virtual ~MediaAssets() = default;
    /// Never returns null. If the file cannot be opened, the first read of the asset fails.
    virtual std::unique_ptr<MediaAsset> open(const std::string& path) = 0;
    /// Starts reading ahead for one reader, until the result is destroyed. Returns null if this class does
    /// not read ahead.
    virtual std::unique_ptr<MediaReadAhead> startReadAhead() { return nullptr; }
};

} // namespace orvalen
