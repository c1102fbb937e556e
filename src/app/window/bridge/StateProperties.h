#pragma once

#include "app/state/ContentView.h"
#include "app/window/bridge/ChangeNotifier.h"
#include "platform/MainQueue.h"
#include "platform/WorkerQueue.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace orvalen {

/// A base class that shows fields of the state to the views as properties. Properties are computed from the
/// fields when they are read. `changed` is emitted when the notifier reports a write to a followed field.
class StateProperties : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

public:
    StateProperties(ContentView& view, ChangeNotifier& notifier);

signals:
    void changed();

protected:
    /// Called after a followed field was written. Emits `changed`.
    virtual void refresh();

    template <typename... T>
    void follow(Field<T>&... fields) {
        (observe(fields, [this] { markDirty(); }), ...);
    }

    /// Calls the function after each write to the field, while this object exists.
    template <typename T>
    void observe(Field<T>& field, std::function<void()> function) {
        field.observe([guard = QPointer<StateProperties>(this), function = std::move(function)] {
            if (guard)
                function();
        });
    }

    /// Runs an operation after the current event was handled. An operation that opens a dialog would
    /// otherwise block the handler of a view.
    void later(std::function<void(ContentView&)> operation);

    /// Runs the work on the match queue and passes its result to the function on the main thread, if this
    /// object still exists.
    template <typename Work, typename Receive>
    void onMatchQueue(Work work, Receive receive) {
        view_.platform.matchQueue.post([&queue = view_.platform.mainQueue,
                                        guard = QPointer<StateProperties>(this), work = std::move(work),
                                        receive = std::move(receive)]() mutable {
            queue.post([guard, receive, result = work()]() mutable {
                if (guard)
                    receive(std::move(result));
            });
        });
    }

    /// Makes the notifier call refresh() soon.
    void markDirty();

    ContentView& view() const { return view_; }

private:
    ContentView& view_;
    ChangeNotifier& notifier_;
    bool dirty_ = false;
};

} // namespace orvalen
