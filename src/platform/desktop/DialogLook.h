#pragma once

#include <QString>

class QDialog;
class QFileDialog;
class QMessageBox;

namespace orvalen {

/// Adjusts a file dialog of Qt: columns that show full names and dates, and a side bar with home, music,
/// desktop, downloads and mounted drives. Leaves a native dialog unchanged.
void prepareDialog(QFileDialog& dialog);

/// Adds a text above the content of the file dialog.
void addMessage(QFileDialog& dialog, const QString& message);

/// Adjusts a message box: plain text, a bold heading, wide enough for its title.
void prepareDialog(QMessageBox& box);

/// Shows the text over the dialog until the user confirms it.
void explain(QDialog& dialog, const QString& text);

} // namespace orvalen
