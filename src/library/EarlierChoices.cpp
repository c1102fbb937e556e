#include "library/EarlierChoices.h"

#include "app/state/ContentView.h"
#include "core/Files.h"
#include "library/LibraryDocument.h"
#include "library/SupportFolder.h"

#include <unistd.h>
#include <utility>

namespace orvalen {
namespace {

void setEarlierChoices(ContentView& view, PreferredMatches choices) {
    if (const auto file = supportFileURL(view.platform.userFolders, "earlier_choices.json")) {
        if (choices.empty())
            ::unlink(file->path.c_str());
        else
            static_cast<void>(writeWholeFile(file->path, preferredMatchesText(choices)));
    }
    view.earlierChoices.set(std::move(choices));
}

} // namespace

void loadEarlierChoices(ContentView& view) {
    const auto file = supportFileURL(view.platform.userFolders, "earlier_choices.json");
    if (!file)
        return;
    if (auto bytes = readWholeFile(file->path))
        if (auto choices = readPreferredMatches(std::move(*bytes)))
            view.earlierChoices.set(std::move(*choices));
}

void keepChoicesReplacedBy(ContentView& view, const PreferredMatches& matches) {
    const PreferredMatches replaced = view.database().rowsReplacedBy(matches);
    if (replaced.empty())
        return;
    PreferredMatches kept;
    for (const PreferredMatches* choices : {&replaced, &view.earlierChoices.get()})
        for (const auto& choice : *choices)
            if (kept.size() < mostEarlierChoices)
                kept.insert(choice); // does not replace a later choice for the same key
    setEarlierChoices(view, std::move(kept));
}

void forgetEarlierChoice(ContentView& view, std::string_view key) {
    const PreferredMatches& known = view.earlierChoices.get();
    if (known.find(key) == known.end())
        return;
    PreferredMatches others = known;
    others.erase(std::string(key));
    setEarlierChoices(view, std::move(others));
}

void keepEarlierChoice(ContentView& view, const std::string& key, const std::string& path) {
    PreferredMatches choices = view.earlierChoices.get();
    choices.insert_or_assign(key, path);
    setEarlierChoices(view, std::move(choices));
}

void forgetAllEarlierChoices(ContentView& view) {
    setEarlierChoices(view, {});
}

} // namespace orvalen
