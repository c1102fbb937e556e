#pragma once

#include <memory>

class QFileDialog;

namespace orvalen {

/// Hides the dialog and deletes it later. The destructor of a file dialog waits for the thread that reads
/// folders. The dialog is therefore kept until that thread has answered; on a drive that never answers, for
/// ever. Main thread.
void deleteWhenIdle(QFileDialog* dialog);

struct DeleteWhenIdle {
    void operator()(QFileDialog* dialog) const { deleteWhenIdle(dialog); }
};

template <typename Dialog>
using OwnedDialog = std::unique_ptr<Dialog, DeleteWhenIdle>;

} // namespace orvalen
