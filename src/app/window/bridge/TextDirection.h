#pragma once

#include <QString>

namespace orvalen {

// These functions prepare texts with right-to-left names for display. Each name is shown in its own
// direction, but the order of folders and of the program's own words stays left to right. Other texts are
// unchanged.

/// `text` is a song, with or without its tempo in parentheses at the end.
QString directedSong(const QString& text);

/// `text` is a path, with or without a caption before its first slash.
QString directedPath(const QString& text);

} // namespace orvalen
