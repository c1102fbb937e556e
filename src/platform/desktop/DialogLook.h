#pragma once

#include <QString>

class QDialog;
class QFileDialog;
class QMessageBox;

namespace orvalen {

/// Sets up a file dialog of Qt. Its columns show full names and dates. Its side bar shows home, music,
/// desktop, downloads and mounted drives. Leaves a native dialog unchanged.
void prepareDialog(QFileDialog& dialog);

/// Adds a text above the content of the file dialog.
void addMessage(QFileDialog& dialog, const QString& message);

/// Sets up a message box: plain text, a bold heading, the program's icon, wide enough for its title.
void prepareDialog(QMessageBox& box);

/// The message if the drive of the path %1 does not answer.
inline constexpr const char* noAnswer = "%1\nis on a drive that does not answer.";
/// Shows the text in a message box over the dialog. Returns when the user has confirmed it.
void explain(QDialog& dialog, const QString& text);

} // namespace orvalen
