#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace orvalen {

/// Collects field changes and emits one signal for them, at most sixty times a second. Main thread.
class ChangeNotifier : public QObject {
    Q_OBJECT

public:
    ChangeNotifier();
    /// Emits `notified` soon. All calls before the signal cause only one signal.
    void schedule();

signals:
    void notified();

private:
    void notifyViews();

    QTimer timer_;
    QElapsedTimer sinceLast_;
};

} // namespace orvalen
