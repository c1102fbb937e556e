#include "app/OpenedFile.h"

#include "app/state/ContentView.h"
#include "core/Text.h"
#include "library/LibraryFile.h"
#include "platform/Dialogs.h"
#include "session/SessionFiles.h"

#include <string>

namespace orvalen {
namespace {

std::string fileName(const Location& file) {
    return std::string(lastPathComponent(file.path));
}

bool hasExtension(const Location& file, std::string_view extension) {
    return toAsciiLower(pathExtension(file.path)) == extension;
}

void openSession(ContentView& view, const Location& file) {
    if (view.showResultsPage.get() &&
        !view.platform.dialogs.confirm("Open the session “" + fileName(file) + "”?",
                                       "It replaces the wanted list and the results that are shown.",
                                       "Open Session"))
        return;
    loadSessionFile(view, file);
}

void openLibrary(ContentView& view, const Location& file) {
    if (view.platform.dialogs.confirm("Load the library “" + fileName(file) + "”?",
                                      "It replaces the current library and its stored choices.",
                                      "Load Library"))
        loadScannedLibraryFile(view, file);
}

} // namespace

void openFile(ContentView& view, const Location& file) {
    Dialogs& dialogs = view.platform.dialogs;
    const bool isSession = hasExtension(file, "orvs");
    if (!isSession && !hasExtension(file, "orvl"))
        dialogs.showMessage("“" + fileName(file) + "” cannot be opened",
                            "Orvalen opens session files (.orvs) and library files (.orvl).");
    else if (view.scanProgress.get() > 0)
        dialogs.showMessage("“" + fileName(file) + "” cannot be opened now",
                            "A scan is running. Open the file again when it has ended.");
    else if (isSession)
        openSession(view, file);
    else
        openLibrary(view, file);
}

} // namespace orvalen
