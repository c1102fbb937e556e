#pragma once

#include <memory>

class QQuickWindow;

namespace orvalen {

class ConsoleLog;
struct ContentView;

/// The one window of the program over its state. It restores the library once its first frame is shown, and
/// saves the session now and then as long as it lives. Main thread, with an application object; the state
/// and the log outlive it.
class MainWindow {
public:
    MainWindow(ContentView& view, ConsoleLog& log);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    void show();
    QQuickWindow* window() const;

private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace orvalen
