#include "ReviewedRows.h"
#include "app/window/MainWindow.h"
#include "matching/MatchReview.h"
#include "platform/system/ConsoleLog.h"
#include "support/TestPlatform.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <benchmark/benchmark.h>
#include <chrono>
#include <functional>
#include <memory>

namespace orvalen::test {
namespace {

using Clock = std::chrono::steady_clock;
using Condition = std::function<bool()>;

double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// The real window, off-screen and with software rendering.
class Stage {
public:
    Stage() {
        window_ = std::make_unique<MainWindow>(platform.view, log);
        window_->show();
        QObject::connect(window_->window(), &QQuickWindow::frameSwapped, [this] { ++frames_; });
        rest();
    }

    struct Took {
        double change; ///< seconds until the items of the window show the change
        double frame;  ///< seconds until the next frame is drawn
    };

    Took untilShown(const std::function<void()>& change, const Condition& isShown) {
        const auto begin = Clock::now();
        change();
        while (!isShown())
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        const double changed = secondsSince(begin);
        const int before = frames_;
        window_->window()->update();
        while (frames_ == before)
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        return {changed, secondsSince(begin)};
    }

    /// Waits until animations have ended.
    void rest() {
        const auto begin = Clock::now();
        while (secondsSince(begin) < 0.5) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            platform.settle();
        }
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(window_->window(), &event);
    }

    /// Returns the first visible item for which `fits` is true.
    QQuickItem* find(const std::function<bool(QQuickItem&)>& fits) const {
        return find(*window_->window()->contentItem(), fits);
    }

    bool showsText(const QString& text) const {
        return find([&](QQuickItem& item) { return item.property("text") == text; }) != nullptr;
    }

    QQuickItem* editor() const {
        return find([](QQuickItem& item) { return item.inherits("QQuickTextArea"); });
    }

    TestPlatform platform;
    ConsoleLog log{platform.console};
    ContentView& view = platform.view;

private:
    static QQuickItem* find(QQuickItem& item, const std::function<bool(QQuickItem&)>& fits) {
        if (!item.isVisible())
            return nullptr;
        if (fits(item))
            return &item;
        for (QQuickItem* child : item.childItems())
            if (QQuickItem* found = find(*child, fits))
                return found;
        return nullptr;
    }

    std::unique_ptr<MainWindow> window_;
    int frames_ = 0;
};

/// Reports the time until the items show the change. The time until the frame is a separate counter.
void count(benchmark::State& state, const Stage::Took& took) {
    state.SetIterationTime(took.change);
    state.counters["ms_with_frame"] = took.frame * 1e3;
}

void firstFrame(benchmark::State& state) {
    for (auto _ : state) {
        TestPlatform platform;
        const auto begin = Clock::now();
        ConsoleLog log(platform.console);
        MainWindow window(platform.view, log);
        bool shown = false;
        QObject::connect(window.window(), &QQuickWindow::frameSwapped, [&] { shown = true; });
        window.show();
        while (!shown)
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        state.SetIterationTime(secondsSince(begin));
    }
}

void openResults(benchmark::State& state) {
    const auto rows = reviewedRows(state.range(0));
    for (auto _ : state) {
        Stage stage;
        count(state, stage.untilShown(
                         [&] {
                             stage.view.matchedTracks.set(rows);
                             stage.view.showResultsPage.set(true);
                         },
                         [&] { return stage.showsText(QString::fromStdString(rowLabel(rows.front()))); }));
    }
}

void includeAll(benchmark::State& state) {
    Stage stage;
    stage.view.matchedTracks.set(reviewedRows(state.range(0)));
    stage.view.showResultsPage.set(true);
    stage.rest();
    const QString all = QString("%1 tracks selected").arg(state.range(0));
    bool include = false;
    for (auto _ : state) {
        const QString text = include ? all : "0 tracks selected";
        count(state, stage.untilShown([&] { setIncludeForAll(stage.view, include); },
                                      [&] { return stage.showsText(text); }));
        include = !include;
        stage.rest();
    }
}

void tick(benchmark::State& state) {
    Stage stage;
    stage.view.matchedTracks.set(reviewedRows(state.range(0)));
    setIncludeForAll(stage.view, false);
    stage.view.showResultsPage.set(true);
    stage.rest();
    bool include = true;
    for (auto _ : state) {
        const QString text = include ? "1 track selected" : "0 tracks selected";
        count(state, stage.untilShown([&] { setInclude(stage.view, 1, include); },
                                      [&] { return stage.showsText(text); }));
        include = !include;
        stage.rest();
    }
}

QString wantedLines(std::int64_t count) {
    QString text;
    for (std::int64_t i = 0; i < count; ++i)
        text += QString("The Night Band %1 – Last Train Home (Extended Mix) %1\n").arg(i);
    return text;
}

void paste(benchmark::State& state) {
    const QString text = wantedLines(state.range(0));
    for (auto _ : state) {
        Stage stage;
        QGuiApplication::clipboard()->setText(text);
        stage.editor()->forceActiveFocus();
        count(state,
              stage.untilShown([&] { stage.press(Qt::Key_V, Qt::ControlModifier); }, [] { return true; }));
    }
}

void keystroke(benchmark::State& state) {
    Stage stage;
    stage.view.matchInput.set(wantedLines(state.range(0)).toStdString());
    stage.editor()->forceActiveFocus();
    stage.rest();
    for (auto _ : state) {
        count(state,
              stage.untilShown([&] { stage.press(Qt::Key_X, Qt::NoModifier, "x"); }, [] { return true; }));
        stage.rest(); // the text reaches the state meanwhile
    }
}

BENCHMARK(firstFrame)->Name("window/first_frame")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openResults)
    ->Name("window/open_results")
    ->ArgName("rows")
    ->Arg(10'000)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(includeAll)
    ->Name("window/include_all")
    ->ArgName("rows")
    ->Arg(10'000)
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(tick)
    ->Name("window/tick")
    ->ArgName("rows")
    ->Arg(10'000)
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(paste)
    ->Name("window/paste")
    ->ArgName("lines")
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(keystroke)
    ->Name("window/keystroke")
    ->ArgName("lines")
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvalen::test
