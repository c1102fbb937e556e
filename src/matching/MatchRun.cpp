#include "matching/MatchRun.h"

#include "app/state/ContentView.h"
#include "core/Keys.h"
#include "core/Text.h"
#include "matching/MatchEngine.h"
#include "matching/RememberedPaths.h"
#include "platform/Console.h"
#include "platform/MainQueue.h"
#include "platform/WorkerQueue.h"
#include "session/SessionFiles.h"

#include <algorithm>
#include <new>

namespace orvalen {
namespace {

std::string shownWithTempo(const Track& track) {
    return track.title + " [BPM: " + (track.bpm ? std::to_string(*track.bpm) : "nil") + "]";
}

template <typename Text>
std::string bracketedList(const std::vector<Track>& options, Text text) {
    std::string list = "[";
    for (const Track& option : options) {
        if (list.size() > 1)
            list += ", ";
        list.append(1, '"').append(text(option)).append(1, '"');
    }
    return list + "]";
}

void writeDiagnostics(Console& console, const MatchedTrack& row) {
    console.line("Matched " + row.title + " - " + row.artist + ": " +
                 bracketedList(row.options, shownWithTempo));
    console.line("Options for " + row.title + " \u2013 " + row.artist + ": " +
                 bracketedList(row.options, [](const Track& track) { return track.path; }));
}

/// Returns the track that a new row selects: the preferred match, or the first candidate if there is no
/// preferred match. If no candidate has the preferred path, selects the only candidate, or none.
std::optional<Track> chosen(const std::vector<Track>& options, const std::optional<std::string>& preferred) {
    auto choice = options.begin();
    if (preferred)
        choice = findByPath(options, *preferred);
    if (choice == options.end() && options.size() == 1)
        choice = options.begin();
    return choice == options.end() ? std::nullopt : std::optional(*choice);
}

MatchedTrack makeRow(const LibraryCatalog& catalog, Request request) {
    MatchedTrack row;
    row.id = UUID::random();
    const std::vector<std::size_t> positions = findOptions(catalog, request);
    row.title = std::move(request.title);
    row.artist = std::move(request.artist);
    row.found = !positions.empty();
    row.options.reserve(positions.size());
    for (const std::size_t position : positions)
        row.options.push_back(catalog.index().track(position).toTrack());
    return row;
}

void finish(ContentView& view, std::string input, std::vector<MatchedTrack> rows) {
    view.matchProgress.set(0);
    keepReplacedRows(view);
    view.matchedTracks.set(std::move(rows));
    view.matchedInput.set(std::move(input));
    view.showResultsPage.set(true);
    view.isMatching.set(false);
    autoSaveSession(view);
}

/// One run, on the match queue. Owns everything it reads. Of `view` it uses only the platform and the
/// database.
struct MatchRun {
    ContentView& view;
    std::vector<std::string> lines;
    LibraryIndex index;
    std::string format;
    std::string input; ///< the wanted text that contains the lines

    void operator()() const {
        const LibraryCatalog catalog(index);
        RememberedPaths remembered(view.database());
        auto rows = std::make_shared<std::vector<MatchedTrack>>();
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (auto request = parseWantedLine(lines[i], format)) {
                rows->push_back(match(*std::move(request), catalog, remembered));
                const double progress = static_cast<double>(i + 1) / static_cast<double>(lines.size());
                post([progress](ContentView& state) { state.matchProgress.set(progress); });
            }
        post([rows, input = input](ContentView& state) { finish(state, input, std::move(*rows)); });
    }

    MatchedTrack match(Request request, const LibraryCatalog& catalog, RememberedPaths& remembered) const {
        post([text = request.artist + " \u2013 " + request.title](ContentView& state) {
            state.scanningFileName.set(text);
        });
        MatchedTrack row = makeRow(catalog, std::move(request));
        writeDiagnostics(view.platform.console, row);
        row.selectedTrack = chosen(row.options, remembered.of(libraryKey(row.artist, row.title)));
        return row;
    }

    template <typename Function>
    void post(Function function) const {
        view.platform.mainQueue.post([&view = view, function = std::move(function)] { function(view); });
    }
};

} // namespace

void matchLines(std::vector<std::string> lines, ContentView& view) {
    view.platform.matchQueue.post(MatchRun{view, std::move(lines), view.trackDict.get(),
                                           view.matchInputFormat.get(), view.matchInput.get()});
}

void prepareMatchingOnLibraryChange(ContentView& view) {
    view.trackDict.observe([&view] {
        if (!view.trackDict.get().empty())
            view.platform.matchQueue.post([index = view.trackDict.get()] {
                try {
                    const LibraryCatalog made(index);
                } catch (const std::bad_alloc&) { // the next run builds the catalog, if there is enough
                                                  // memory then
                }
            });
    });
}

} // namespace orvalen
