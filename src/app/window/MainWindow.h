#pragma once

#include <memory>

class QQuickWindow;

namespace orvalen {

struct ContentView;

/// The one window of the program over its state. It restores the library once its first frame is shown, and
/// saves the session now and then as long as it lives. Main thread, with an application object; the state
/// outlives it.
class MainWindow {
public:
    explicit MainWindow(ContentView& view);
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
