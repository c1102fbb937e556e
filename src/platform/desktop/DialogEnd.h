#pragma once

#include <memory>

class QFileDialog;

namespace orvalen {

/// Hides the dialog and deletes it when its thread that reads folders is idle, because the dialog's
/// destructor waits for that thread. If a drive never answers, the dialog is never deleted. Main thread.
void deleteWhenIdle(QFileDialog* dialog);

struct DeleteWhenIdle {
    void operator()(QFileDialog* dialog) const { deleteWhenIdle(dialog); }
};

template <typename Dialog>
using OwnedDialog = std::unique_ptr<Dialog, DeleteWhenIdle>;

} // namespace orvalen
