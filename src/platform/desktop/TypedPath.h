#pragma once

#include <QString>

class QFileDialog;

namespace orvalen {

/// The absolute path that a text in a dialog's name field stands for: "~" is the user's home, and a relative
/// path begins in the folder that the dialog shows.
QString typedPath(const QFileDialog& dialog, const QString& typed);

} // namespace orvalen
