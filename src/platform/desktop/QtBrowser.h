#pragma once

#include "platform/Browser.h"

namespace orvalen {

/// The browser that the desktop names for web addresses.
class QtBrowser : public Browser {
public:
    void open(const std::string& address) override;
};

} // namespace orvalen
