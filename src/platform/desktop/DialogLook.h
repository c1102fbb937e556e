#pragma once

#include <QString>

class QDialog;
class QFileDialog;
class QMessageBox;

namespace orvalen {

/// Makes ready a file dialog that is not the system's own: names in full, dates that are not cut off, and at
/// its side the folders where music is: home, music, downloads, and the drives that the desktop has mounted.
/// A native dialog looks after itself.
void prepareDialog(QFileDialog& dialog);

/// A line above the file dialog's own content.
void addMessage(QFileDialog& dialog, const QString& message);

/// Makes ready a message: plain text only, a heading that stands out, wide enough for its title.
void prepareDialog(QMessageBox& box);

/// Shows the text over the dialog until the user confirms it.
void explain(QDialog& dialog, const QString& text);

} // namespace orvalen
