#pragma once

#include "support/TemporaryFolder.h"

#include <QProcess>
#include <cstdio>
#include <cstdlib>

namespace orvalen::test {

/// Starts a private message bus without services and makes it the session bus of this process. Create it
/// before the first use of the session bus.
class PrivateBus {
public:
    PrivateBus() {
        const std::string configuration = folder_.write("bus.conf", R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=)" + folder_.path() + R"(</listen>
  <policy context="default">
    <allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
  </policy>
</busconfig>)");
        daemon_.start("dbus-daemon", {"--nofork", "--print-address",
                                      "--config-file=" + QString::fromStdString(configuration)});
        if (!daemon_.waitForStarted() || !daemon_.waitForReadyRead()) {
            std::fputs("dbus-daemon does not start\n", stderr);
            std::abort();
        }
        qputenv("DBUS_SESSION_BUS_ADDRESS", daemon_.readLine().trimmed());
    }
    ~PrivateBus() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

private:
    TemporaryFolder folder_;
    QProcess daemon_;
};

} // namespace orvalen::test
