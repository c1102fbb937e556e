#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orvalen {

struct ContentView;

/// What one match run says to the main thread, in order. A main thread that falls behind by many thousands of
/// steps is not buried: until it has caught up, a later step takes the place of the one that waits to be
/// posted. The texts and fractions that stand last are always delivered. Worker thread.
class MatchPosts {
public:
    explicit MatchPosts(ContentView& view) : view_(view) {}

    void nowMatching(std::string text);
    void progress(double fraction);
    /// Delivers what is still held back, then the function.
    void finish(std::function<void(ContentView&)> function);

    static constexpr std::size_t mostWaiting = 16'384;

private:
    void post(std::function<void(ContentView&)> function);
    void postHeldBack();
    void postHeldBackIfFew();

    ContentView& view_;
    std::shared_ptr<std::atomic<std::size_t>> waiting_ = std::make_shared<std::atomic<std::size_t>>(0);
    std::optional<std::string> heldText_;
    std::optional<double> heldFraction_;
};

} // namespace orvalen
