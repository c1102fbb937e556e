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

/// A track that a search found, as the views show it.
struct FoundTrack {
    QString label;
    std::string path;
};

/// "Find in library" and the suggestions of rows without a candidate. Searches run on the match queue: one at
/// a time, the latest text next. Rows are identified by `id`, because a match run may replace them meanwhile.
class SearchState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QStringList labels READ labels NOTIFY found)
    Q_PROPERTY(QStringList paths READ paths NOTIFY found)
    Q_PROPERTY(QString answered READ answered NOTIFY found)
    Q_PROPERTY(int suggestionCount READ suggestionCount NOTIFY suggested)

public:
    SearchState(ContentView& view, ChangeNotifier& notifier);

    /// What the last finished search found, the best first.
    QStringList labels() const;
    QStringList paths() const;
    /// The text that it looked for.
    QString answered() const { return answered_; }
    /// How many rows have been looked up for suggestions: changes whenever suggestions come.
    int suggestionCount() const { return static_cast<int>(suggestions_.size()); }

    /// Begins a search for the row and returns its artist and title; empty when there is no such row.
    Q_INVOKABLE QString begin(int row);
    Q_INVOKABLE void look(const QString& text);
    /// Attaches a found track to the row that the search was begun for.
    Q_INVOKABLE void attach(int found);
    Q_INVOKABLE void end();

    Q_INVOKABLE QStringList suggestionsOf(int row) const;
    /// Attaches a suggestion to the row.
    Q_INVOKABLE void take(int row, int suggestion);

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
    void attachTo(const UUID& id, const std::string& path);

    /// Searched while the page is open: attaching a file changes the state's index, and preparing that one
    /// anew for each search would take seconds.
    std::optional<LibraryIndex> index_;
    std::optional<UUID> row_;
    std::optional<QString> wantedText_; ///< to look for after the running search
    bool searching_ = false;
    QString answered_;
    std::vector<FoundTrack> found_;
    std::map<UUID, std::vector<FoundTrack>> suggestions_;
    std::size_t looked_ = 0;       ///< rows before it have been looked at
    std::optional<UUID> firstRow_; ///< the list of rows that `looked_` is about
    bool suggesting_ = false;
};

} // namespace orvalen
