#pragma once

#include "app/window/bridge/StateProperties.h"

#include <QString>

namespace orvalen {

/// The version in the footer, and the alert that announces a newer version.
class UpdateState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString footer READ footer CONSTANT)
    Q_PROPERTY(bool shown READ shown NOTIFY changed)
    Q_PROPERTY(QString notes READ notes NOTIFY changed)

public:
    UpdateState(ContentView& view, ChangeNotifier& notifier);

    QString footer() const;
    bool shown() const { return view().showUpdateAlert.get() && view().remoteInfo.get().has_value(); }
    QString notes() const;

    Q_INVOKABLE void download();
    Q_INVOKABLE void dismiss() { view().showUpdateAlert.set(false); }
};

} // namespace orvalen
