#pragma once

#include "core/Error.h"
#include "core/Track.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orvalen {

/// One object of a JSON document during decoding. Returned texts are valid until decoding ends.
///
/// A required member that is missing or has another type is an error. The first error becomes the result of
/// readJson(). The member then reads as an empty value, and no further elements of lists are read. Optional
/// members may be missing or null.
class JsonObject {
public:
    using Reader = std::function<void(const JsonObject&)>;

    std::string_view text(std::string_view key) const;
    std::optional<std::string_view> optionalText(std::string_view key) const;
    bool boolean(std::string_view key) const;
    /// Accepts 128, 128.0 and 1.28e2.
    std::int64_t wholeNumber(std::string_view key) const;
    std::optional<std::int64_t> optionalWholeNumber(std::string_view key) const;
    void object(std::string_view key, const Reader& read) const;
    void optionalObject(std::string_view key, const Reader& read) const;
    /// Calls `read` for each element of an array of objects.
    void objects(std::string_view key, const Reader& read) const;
    void texts(std::string_view key, const std::function<void(std::string_view)>& read) const;
    void requireTextsOnly() const;

    /// Records an error. Only the first error counts.
    void fail(std::string description) const;
    /// Decodes a part whose errors do not fail the document. Returns false if the part has errors.
    bool readPart(const Reader& read) const;

private:
    friend Expected<void> readJsonObject(std::string bytes, const Reader& read);
    struct Parsed;
    explicit JsonObject(const Parsed& parsed) : parsed_(parsed) {}
    template <typename T>
    T required(std::string_view key, std::string_view kind) const;

    const Parsed& parsed_;
};

/// Decodes a document that is one object, with or without a byte-order mark. Parses the bytes in place, so
/// move long texts into the call. Out of memory is an error.
Expected<void> readJsonObject(std::string bytes, const JsonObject::Reader& read);

/// Decodes a document that is one array of strings, with or without a byte-order mark. Out of memory is an
/// error.
Expected<std::vector<std::string>> readJsonTexts(std::string bytes);

/// Returns the result of `read` for the root object, or the first error.
template <typename Read>
auto readJson(std::string bytes, Read read) {
    std::optional<std::invoke_result_t<Read, const JsonObject&>> result;
    return readJsonObject(std::move(bytes), [&](const JsonObject& root) { result.emplace(read(root)); })
        .map([&result] { return std::move(*result); });
}

/// Decodes a track. The result refers to the document's texts.
TrackView readTrack(const JsonObject& object);

} // namespace orvalen
