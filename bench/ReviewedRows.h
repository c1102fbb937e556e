#pragma once

#include "support/Builders.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace orvalen::test {

/// Typical reviewed rows: names of usual length, some not ASCII, five candidates per row.
inline std::vector<MatchedTrack> reviewedRows(std::int64_t count) {
    std::vector<MatchedTrack> rows;
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        const std::string artist = i % 4 == 0 ? "Señor Ritmo " + number : "The Night Band " + number;
        const std::string title = "Last Train Home (Extended Mix) " + number;
        std::vector<Track> options;
        for (int option = 0; option < 5; ++option) {
            const std::string path = "/home/dj/Music/House/" + artist + "/Album " + std::to_string(option) +
                                     "/" + artist + " - " + title + ".mp3";
            options.push_back(Track{title, artist, "House", path, 120 + option});
        }
        rows.push_back(row(artist, title, std::move(options), true));
    }
    return rows;
}

} // namespace orvalen::test
