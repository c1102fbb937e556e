#pragma once

#include "core/Error.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// One tag of a file. The value is read as text when it is asked for: absent, or an error.
struct MetadataItem {
    std::string identifier; ///< for an ID3 frame ‘id3/TBPM’ and the like; may be empty
    std::string commonKey;  ///< "title", "artist", …, or empty
    Expected<std::optional<std::string>> value;
};

/// Among a file's formats this one says that it carries an ID3 tag.
inline constexpr std::string_view id3Format = "org.id3";

/// The tags of one opened audio file. Every call may read the file and may fail; texts are valid UTF-8.
class MediaAsset {
public:
    virtual ~MediaAsset() = default;
    /// The tags in a view that is the same for every format; an error when the file is no readable media.
    virtual Expected<std::vector<MetadataItem>> commonMetadata() = 0;
    virtual Expected<std::vector<std::string>> availableFormats() = 0;
    virtual Expected<std::vector<MetadataItem>> id3Metadata() = 0;
};

/// Asks the system to have the tags of files at hand before a single reader opens them. Errors are ignored.
/// One thread; no call waits for a drive.
class MediaReadAhead {
public:
    virtual ~MediaReadAhead() = default;
    /// The caller expects at most so many files that the reader has not passed.
    static constexpr std::size_t mostFiles = 256;

    /// Appends a file to those that the reader will open, in this order.
    virtual void expect(const std::string& path) = 0;
    /// Tells that the reader has done with the next expected file.
    virtual void passOne() = 0;
};

/// Opens assets. Any thread, one file at a time.
class MediaAssets {
public:
    virtual ~MediaAssets() = default;
    /// Never null; a file that cannot be opened answers its first load with the error.
    virtual std::unique_ptr<MediaAsset> open(const std::string& path) = 0;
    /// Starts to read ahead for one reader until the result is deleted. Null where that has no use.
    virtual std::unique_ptr<MediaReadAhead> startReadAhead() { return nullptr; }
};

} // namespace orvalen
