#pragma once

#include "platform/Browser.h"

namespace orvalen {

/// Opens addresses in the desktop's default browser.
class QtBrowser : public Browser {
public:
    void open(const std::string& address) override;
};

} // namespace orvalen
