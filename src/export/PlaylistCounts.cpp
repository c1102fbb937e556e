#include "export/PlaylistCounts.h"

#include "core/Text.h"
#include "matching/MatchReview.h"

#include <string_view>

namespace orvalen {
namespace {

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : several);
}

} // namespace

PlaylistCounts playlistCounts(const std::vector<MatchedTrack>& rows) {
    PlaylistCounts counts;
    TextMap<int> times;
    for (const MatchedTrack& row : rows) {
        if (!row.include)
            continue;
        if (!row.selectedTrack) {
            ++counts.missing;
            continue;
        }
        ++counts.written;
        if (++times[row.selectedTrack->path] == 2)
            ++counts.repeated;
    }
    return counts;
}

std::string playlistCaption(const PlaylistCounts& counts) {
    if (counts.missing == 0 && counts.repeated == 0)
        return {};
    std::string text = counted(counts.written, "file will be written", "files will be written");
    if (counts.missing > 0)
        text += "; " + counted(counts.missing, "selected row has no file", "selected rows have no file");
    if (counts.repeated > 0)
        text += "; " + counted(counts.repeated, "file is", "files are") + " written twice or more";
    return text;
}

std::string missingList(const std::vector<MatchedTrack>& rows) {
    std::string list;
    for (const MatchedTrack& row : rows)
        if (!row.selectedTrack)
            list += rowLabel(row) + "\n";
    return list;
}

} // namespace orvalen
