#pragma once

#include <string>

namespace orvalen {

class Browser {
public:
    virtual ~Browser() = default;
    /// Hands a web address to the user's browser. Addresses other than http and https are not opened. Main
    /// thread.
    virtual void open(const std::string& address) = 0;
};

} // namespace orvalen
