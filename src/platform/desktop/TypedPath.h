#pragma once

#include <QString>

class QFileDialog;

namespace orvalen {

/// Returns the absolute path for a text typed into a dialog's name field. "~" is the user's home. Relative
/// paths start in the folder that the dialog shows.
QString typedPath(const QFileDialog& dialog, const QString& typed);

} // namespace orvalen
