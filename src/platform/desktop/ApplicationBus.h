#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <vector>

class QWindow;

namespace orvalen {

/// The program on the session bus, with the name org.orvalen.Orvalen and the interface
/// org.freedesktop.Application. Desktops and a second process use it to bring the window to the front and to
/// open files. Main thread. May be created before the application object.
class ApplicationBus : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Claim {
        first,  ///< this process owns the name
        second, ///< another process owns the name
        noBus   ///< there is no bus, or it does not answer
    };

    ~ApplicationBus() override;

    /// Requests the name. Blocks for at most about one second. If the bus accepts connections but does not
    /// answer, removes the bus from this process's environment, because Qt would wait for it repeatedly.
    Claim claim();

    /// Asks the owner of the name to come to the front and to open the files. Returns false if it does not
    /// answer within five seconds.
    bool activateOwner(const QStringList& uris = {});

    /// Sets the functions that handle requests. The event loop then calls them for earlier requests, too.
    /// Files are opened only while no modal dialog is open.
    void serve(std::function<void()> raise, std::function<void(const QString& uri)> open);

public slots:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameter,
                                     const QVariantMap& platformData);

private:
    void answerLater();
    void answer();

    std::function<void()> raise_;
    std::function<void(const QString&)> open_;
    bool raiseWanted_ = false;
    bool answerPending_ = false;
    QStringList filesToOpen_;
};

/// Brings the window, or the dialog over it, to the front, as far as the desktop allows it.
void bringToFront(QWindow& window);

} // namespace orvalen
