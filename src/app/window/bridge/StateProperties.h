#pragma once

#include "app/state/ContentView.h"
#include "app/window/bridge/ChangeNotifier.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace orvalen {

/// Shows some fields of the state to the views as properties. The properties are computed from the fields
/// when they are read; `changed` is emitted when the notifier reports that one of the fields was written.
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

    template <typename T>
    void follow(Field<T>& field) {
        field.observe([guard = QPointer<StateProperties>(this)] {
            if (guard)
                guard->markDirty();
        });
    }

    /// Follows only the writes after which `matters()` is true.
    template <typename T, typename Matters>
    void follow(Field<T>& field, Matters matters) {
        field.observe([guard = QPointer<StateProperties>(this), matters] {
            if (guard && matters())
                guard->markDirty();
        });
    }

    /// Runs an operation after the event that asked for it has been handled, so that a dialog which it opens
    /// does not keep a view's handler waiting.
    void later(std::function<void(ContentView&)> operation);

    ContentView& view() const { return view_; }

private:
    void markDirty();

    ContentView& view_;
    ChangeNotifier& notifier_;
    bool dirty_ = false;
};

} // namespace orvalen
