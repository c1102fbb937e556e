#pragma once

#include <memory>

class QQuickWindow;

namespace orvalen {

class ConsoleLog;
struct ContentView;

/// The program's window, which shows the state. Restores the library after the first frame was shown. Saves
/// the session every 30 seconds while the object exists. Main thread, with an application object. `view` and
/// `log` must outlive it.
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
