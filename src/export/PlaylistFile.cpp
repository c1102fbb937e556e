#include "export/PlaylistFile.h"

#include "core/Files.h"

namespace orvalen {

std::string playlistFileText(const std::vector<MatchedTrack>& rows) {
    std::string text;
    bool first = true;
    for (const MatchedTrack& row : rows) {
        if (!row.include || !row.selectedTrack)
            continue;
        if (!first)
            text += '\n';
        text += row.selectedTrack->path;
        first = false;
    }
    return text;
}

Expected<void> writePlaylistFile(std::string_view text, const Location& destination) {
    return writeFileAtomically(destination.path, text);
}

} // namespace orvalen
