#include "app/state/MainThread.h"

#include <atomic>
#include <cassert>
#include <thread>

namespace orvalen {
namespace {

std::atomic<std::thread::id>& owner() {
    static std::atomic<std::thread::id> id;
    return id;
}

} // namespace

void becomeMainThread() {
    owner() = std::this_thread::get_id();
}

#ifndef NDEBUG
void assertMainThread() {
    assert(owner().load() == std::this_thread::get_id());
}
#endif

} // namespace orvalen
