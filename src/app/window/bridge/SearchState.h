#pragma once

#include "app/window/bridge/StateProperties.h"
#include "core/LibraryIndex.h"
#include "core/Uuid.h"

#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvalen {

/// A track that a search found, as text for the views.
struct FoundTrack {
    QString label;
    Track track;
};

/// "Find in library" and the suggestions for rows without a candidate. Searches run on the match queue, one
/// at a time. If several texts arrive during a search, only the last one is searched next. Rows are
/// identified by `id`, because a match run may replace them meanwhile.
class SearchState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QStringList labels READ labels NOTIFY found)
    Q_PROPERTY(QStringList paths READ paths NOTIFY found)
    Q_PROPERTY(QString answered READ answered NOTIFY found)
    Q_PROPERTY(int suggestionCount READ suggestionCount NOTIFY suggested)

public:
    SearchState(ContentView& view, ChangeNotifier& notifier);

    /// The results of the last finished search, the best first.
    QStringList labels() const;
    QStringList paths() const;
    /// The text of that search.
    QString answered() const { return answered_; }
    /// The number of rows with looked-up suggestions. Changes whenever suggestions arrive.
    int suggestionCount() const { return static_cast<int>(suggestions_.size()); }

    /// Starts a search for the row. Returns its artist and title, or an empty text if there is no such row.
    Q_INVOKABLE QString begin(int row);
    Q_INVOKABLE void look(const QString& text);
    /// Attaches a result to the row of begin().
    Q_INVOKABLE void attach(int found);
    /// Plays or pauses a result. Does not change the row.
    Q_INVOKABLE void preview(int found);
    Q_INVOKABLE void end();

    Q_INVOKABLE QStringList suggestionsOf(int row) const;
    /// Attaches a suggestion to the row.
    Q_INVOKABLE void take(int row, int suggestion);
    Q_INVOKABLE void previewSuggestion(int row, int suggestion);

signals:
    void found();
    void suggested();

protected:
    void refresh() override;

private:
    struct Wanted {
        UUID id;
        std::string artist;
        std::string title;
    };
    struct Suggestions {
        UUID id;
        std::vector<FoundTrack> tracks;
    };

    const LibraryIndex& index();
    void search();
    void receive(const QString& text, std::vector<FoundTrack> tracks);
    std::vector<Wanted> nextRowsToSuggest();
    void suggest();
    void receiveSuggestions(std::vector<Suggestions> suggestions);
    /// Returns the suggestions of the row, or null if there are none.
    const std::vector<FoundTrack>* suggestionsFor(int row) const;
    /// Returns the suggestion of the row, or null if it does not exist.
    const FoundTrack* suggestionAt(int row, int suggestion) const;
    void attachTo(const UUID& id, const std::string& path);

    /// The searched index while the page is open. Attaching a file changes the state's index, and building a
    /// catalog for it would take seconds per search.
    std::optional<LibraryIndex> index_;
    std::optional<UUID> row_;
    std::optional<QString> wantedText_; ///< the text to search for after the running search
    bool searching_ = false;
    QString answered_;
    std::vector<FoundTrack> found_;
    std::map<UUID, std::vector<FoundTrack>> suggestions_;
    std::size_t looked_ = 0;       ///< position of the first row that has not been looked up
    std::optional<UUID> firstRow_; ///< the id of the first row; another id means other rows
    bool suggesting_ = false;
};

} // namespace orvalen
