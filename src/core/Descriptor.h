#pragma once

#include <unistd.h>
#include <utility>

namespace orvalen {

/// Owns a file descriptor and closes it. A negative number means that it owns none. The destructor ignores
/// the error of closing; close() returns it.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    bool isOpen() const { return number_ >= 0; }
    int close() { return ::close(std::exchange(number_, -1)); }

private:
    int number_;
};

} // namespace orvalen
