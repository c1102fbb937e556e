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

/// One object of a JSON document while it is read. Texts live as long as the reading. A required member that
/// is missing or of another kind fails the whole reading: the member then reads as an empty value, lists end,
/// and readJson() returns the first such error. An optional member may be missing or null.
class JsonObject {
public:
    using Reader = std::function<void(const JsonObject&)>;

    std::string_view text(std::string_view key) const;
    std::optional<std::string_view> optionalText(std::string_view key) const;
    bool boolean(std::string_view key) const;
    /// 128, 128.0 and 1.28e2 are whole numbers.
    std::int64_t wholeNumber(std::string_view key) const;
    std::optional<std::int64_t> optionalWholeNumber(std::string_view key) const;
    void object(std::string_view key, const Reader& read) const;
    void optionalObject(std::string_view key, const Reader& read) const;
    /// Calls read for each element of an array of objects.
    void objects(std::string_view key, const Reader& read) const;
    void texts(std::string_view key, const std::function<void(std::string_view)>& read) const;
    void requireTextsOnly() const;

    /// Fails the reading, unless it has failed already.
    void fail(std::string description) const;
    /// Reads a part whose errors do not fail the reading. Returns false when it has errors.
    bool readPart(const Reader& read) const;

private:
    friend Expected<void> readJsonObject(std::string bytes, const Reader& read);
    struct Parsed;
    explicit JsonObject(const Parsed& parsed) : parsed_(parsed) {}
    template <typename T>
    T required(std::string_view key, std::string_view kind) const;

    const Parsed& parsed_;
};

/// Reads a document that is one object, with or without a byte-order mark before it. The bytes are read in
/// place: pass a long text by moving it. Running out of memory is an error.
Expected<void> readJsonObject(std::string bytes, const JsonObject::Reader& read);

/// The same for a document that is one array of strings.
Expected<std::vector<std::string>> readJsonTexts(std::string bytes);

/// Returns what read(root) returns, or the first error.
template <typename Read>
auto readJson(std::string bytes, Read read) {
    std::optional<std::invoke_result_t<Read, const JsonObject&>> result;
    return readJsonObject(std::move(bytes), [&](const JsonObject& root) { result.emplace(read(root)); })
        .map([&result] { return std::move(*result); });
}

/// The track that the object describes.
TrackView readTrack(const JsonObject& object);

} // namespace orvalen
