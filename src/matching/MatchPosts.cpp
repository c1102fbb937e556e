#include "matching/MatchPosts.h"

#include "app/state/ContentView.h"
#include "platform/MainQueue.h"

#include <utility>

namespace orvalen {

void MatchPosts::nowMatching(std::string text) {
    postHeldBackIfFew(); // what is held back comes before this text
    heldText_ = std::move(text);
    postHeldBackIfFew();
}

void MatchPosts::progress(double fraction) {
    heldFraction_ = fraction;
    postHeldBackIfFew();
}

void MatchPosts::finish(std::function<void(ContentView&)> function) {
    postHeldBack();
    post(std::move(function));
}

void MatchPosts::postHeldBackIfFew() {
    if (waiting_->load(std::memory_order_relaxed) < mostWaiting)
        postHeldBack();
}

void MatchPosts::postHeldBack() {
    if (heldText_)
        post([text = *std::exchange(heldText_, {})](ContentView& view) { view.scanningFileName.set(text); });
    if (heldFraction_)
        post([fraction = *std::exchange(heldFraction_, {})](ContentView& view) {
            view.matchProgress.set(fraction);
        });
}

void MatchPosts::post(std::function<void(ContentView&)> function) {
    waiting_->fetch_add(1, std::memory_order_relaxed);
    view_.platform.mainQueue.post([&view = view_, waiting = waiting_, function = std::move(function)] {
        waiting->fetch_sub(1, std::memory_order_relaxed);
        function(view);
    });
}

} // namespace orvalen
