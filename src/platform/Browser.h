#pragma once

#include <string>

namespace orvalen {

class Browser {
public:
    virtual ~Browser() = default;
    /// Opens a web address in the user's browser. Ignores addresses that are not http or https. Main thread.
    virtual void open(const std::string& address) = 0;
};

} // namespace orvalen
