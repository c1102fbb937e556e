#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <vector>

class QWindow;

namespace orvalen {

/// The program on the session bus, under the name org.orvalen.Orvalen with the interface
/// org.freedesktop.Application: desktops and a second start of the program ask the running one to come to the
/// front and to open files. Main thread; may be made before the application object.
class ApplicationBus : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Claim {
        first,  ///< the name is ours now
        second, ///< another process owns it
        noBus   ///< there is no bus, or it does not answer
    };

    ~ApplicationBus() override;

    /// Takes the name. Blocks for at most about a second. Where the bus accepts connections and answers
    /// nothing, the environment of this process names no bus afterwards: the toolkit would wait for it again
    /// and again.
    Claim claim();

    /// Asks the owner of the name to come to the front. False when it does not answer within five seconds.
    bool activateOwner();

    /// The functions that requests are passed to. Requests from before wait for this call; files wait while a
    /// modal dialog is open, too.
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

/// Brings the window, or the dialog that is open over it, to the front as far as the desktop allows that.
void bringToFront(QWindow& window);

} // namespace orvalen
