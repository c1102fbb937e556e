#pragma once

#include "support/TemporaryFolder.h"

#include <QProcess>

namespace orvalen::test {

/// A message bus of our own on which nothing is started by itself, as this process's session bus. Made before
/// anybody asks for that bus.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

private:
    TemporaryFolder folder_;
    QProcess daemon_;
};

} // namespace orvalen::test
