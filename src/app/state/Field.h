#pragma once

#include "app/state/MainThread.h"

#include <functional>
#include <utility>
#include <vector>

namespace orvalen {

/// An observable value of the state. Observers are called after every write, even if the value is equal, and
/// live as long as the field. Main thread.
template <typename T>
class Field {
public:
    Field() = default;
    explicit Field(T initial) : value_(std::move(initial)) {}
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;

    const T& get() const {
        assertMainThread();
        return value_;
    }

    void set(T value) {
        assertMainThread();
        value_ = std::move(value);
        notify();
    }

    /// Changes the value in place.
    template <typename Change>
    void update(Change change) {
        assertMainThread();
        change(value_);
        notify();
    }

    void observe(std::function<void()> observer) {
        assertMainThread();
        observers_.push_back(std::move(observer));
    }

private:
    void notify() {
        for (const auto& observer : observers_)
            observer();
    }

    T value_{};
    std::vector<std::function<void()>> observers_;
};

} // namespace orvalen
