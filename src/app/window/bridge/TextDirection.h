#pragma once

#include <QString>

namespace orvalen {

// Texts that contain right-to-left names, for display. The order of the program's words and of folders stays
// left to right, and each name is shown in its own direction. Other texts are returned unchanged.

/// A song, with or without its tempo in parentheses at the end.
QString directedSong(const QString& text);

/// A path, with or without a caption before its first slash.
QString directedPath(const QString& text);

} // namespace orvalen
