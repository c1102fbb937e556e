#pragma once

#include "core/Track.h"

#include <string>
#include <string_view>

namespace orvalen {

// The one form in which texts are compared, and the keys made of it. Pure; any thread.

/// Lower case, without diacritics, words of letters, marks and numbers joined by one space; may be empty.
/// The result is in composed form. Vowel signs of the Indic and Thai scripts stay, and so do ‘ø’, ‘ł’ and
/// ‘ß’.
std::string normalize(std::string_view text);
/// The same into a text whose memory is used again; the two must not overlap.
void normalizeInto(std::string& result, std::string_view text);

/// The key under which a track is filed and a wanted line is looked up: artist first, always.
std::string libraryKey(std::string_view artist, std::string_view title);

/// The normalised name of the track's file without its extension.
std::string fileNameKey(std::string_view path);

/// Whether the needle, already normalised, stands somewhere in the haystack; an empty needle stands nowhere.
bool containsNormalized(std::string_view haystack, std::string_view needle);

/// The loosest comparison: the track's artist contains the wanted artist and its title the wanted title.
bool containmentTest(const TrackView& track, std::string_view wantedArtist, std::string_view wantedTitle);

} // namespace orvalen
