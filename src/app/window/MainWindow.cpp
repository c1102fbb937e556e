#include "app/window/MainWindow.h"

#include "app/OrvalenApp.h"
#include "app/window/accessible/ControlAccessible.h"
#include "app/window/bridge/ChangeNotifier.h"
#include "app/window/bridge/Drops.h"
#include "app/window/bridge/ExportState.h"
#include "app/window/bridge/LibraryState.h"
#include "app/window/bridge/ListHelpState.h"
#include "app/window/bridge/LogModel.h"
#include "app/window/bridge/PreviewState.h"
#include "app/window/bridge/ReviewState.h"
#include "app/window/bridge/SearchState.h"
#include "app/window/bridge/UpdateState.h"
#include "app/window/bridge/WantedState.h"
#include "app/window/style/ColorScheme.h"
#include "app/window/symbols/SymbolProvider.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <utility>

// Generated for the QML module. Must be called, because a static library does not register its QML types
// itself.
void qml_register_types_Orvalen();

namespace orvalen {
namespace {

/// Returns the default font with Inter before it, if installed, and colour emoji as fallback.
QFont applicationFont() {
    QStringList families = QGuiApplication::font().families();
    if (QFontDatabase::hasFamily("Inter"))
        families.prepend("Inter");
    families.append("Noto Color Emoji");
    QFont font = QGuiApplication::font();
    font.setFamilies(families);
    return font;
}

/// Limits a pool of Qt's scene graph to 64 unused shader bindings. By default, it keeps a thousand of 3 kB
/// each, but this window needs only some dozens.
void boundRendererPool() {
    constexpr const char* threshold = "QSG_RENDERER_SRB_POOL_THRESHOLD";
    if (!qEnvironmentVariableIsSet(threshold))
        qputenv(threshold, "64");
}

/// Selects Qt's software renderer if there is no graphics card. It draws only what has changed. The default
/// renderer would emulate a graphics card and draw every frame completely.
void chooseRenderer() {
    const bool chosenByUser =
        qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    const bool hasGraphicsCard = QFileInfo::exists("/dev/dri") || QFileInfo::exists("/dev/nvidiactl");
    if (!chosenByUser && !hasGraphicsCard)
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

} // namespace

class MainWindow::Parts : public QObject {
public:
    Parts(ContentView& state, ConsoleLog& consoleLog)
        : view(state), library(state, notifier), wanted(state, notifier), listHelp(state, notifier, wanted),
          review(state, notifier), search(state, notifier), exports(state, notifier, wanted),
          preview(state, notifier), update(state, notifier), drops(state, notifier), log(consoleLog) {
        qml_register_types_Orvalen();
        installControlAccessible();
        boundRendererPool();
        chooseRenderer();
        QGuiApplication::setFont(applicationFont());
        QGuiApplication::setWindowIcon(QIcon(":/qt/qml/Orvalen/icon.svg"));
        engine.addImageProvider("symbol", new SymbolProvider);
        engine.addImportPath(":/qt/qml");
        engine.setInitialProperties({{"library", QVariant::fromValue(&library)},
                                     {"wanted", QVariant::fromValue(&wanted)},
                                     {"listHelp", QVariant::fromValue(&listHelp)},
                                     {"review", QVariant::fromValue(&review)},
                                     {"search", QVariant::fromValue(&search)},
                                     {"exports", QVariant::fromValue(&exports)},
                                     {"preview", QVariant::fromValue(&preview)},
                                     {"update", QVariant::fromValue(&update)},
                                     {"drops", QVariant::fromValue(&drops)},
                                     {"log", QVariant::fromValue(&log)}});
        engine.load(QUrl("qrc:/qt/qml/Orvalen/pages/Main.qml"));
        if (engine.rootObjects().isEmpty())
            qFatal("The window cannot be made");
        window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
        connect(window, &QQuickWindow::frameSwapped, this, &Parts::appear, Qt::QueuedConnection);
    }

    void show() {
        window->show();
        autoSave = installAutoSave(view);
    }

    void appear() {
        if (!std::exchange(appeared, true))
            contentAppeared(view, std::move(reading));
    }

    ContentView& view;
    LibraryReading reading{startReadingLibrary(view.platform.userFolders)};
    ChangeNotifier notifier;
    ColorScheme colorScheme{QGuiApplication::palette()};
    LibraryState library;
    WantedState wanted;
    ListHelpState listHelp;
    ReviewState review;
    SearchState search;
    ExportState exports;
    PreviewState preview;
    UpdateState update;
    Drops drops;
    LogModel log;
    QQmlApplicationEngine engine;
    QQuickWindow* window = nullptr;
    TimerHandle autoSave;
    bool appeared = false;
};

MainWindow::MainWindow(ContentView& view, ConsoleLog& log) : parts_(std::make_unique<Parts>(view, log)) {}

MainWindow::~MainWindow() = default;

void MainWindow::show() {
    parts_->show();
}

QQuickWindow* MainWindow::window() const {
    return parts_->window;
}

} // namespace orvalen
