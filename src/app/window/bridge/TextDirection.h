#pragma once

#include <QString>

namespace orvalen {

// Texts with right-to-left names, for display: the program's own words and the order of folders stay left to
// right, and each name is written in its own direction. Other texts are returned unchanged.

/// A song, with its tempo in parentheses at the end or without.
QString directedSong(const QString& text);

/// A path, with a caption before its first slash or without.
QString directedPath(const QString& text);

} // namespace orvalen
