#include "desktop/PrivateBus.h"

#include <cstdio>

namespace orvalen::test {

PrivateBus::PrivateBus() {
    const std::string configuration = folder_.write("bus.conf", R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=)" + folder_.path() + R"(</listen>
  <policy context="default">
    <allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
  </policy>
</busconfig>)");
    daemon_.start("dbus-daemon",
                  {"--nofork", "--print-address", "--config-file=" + QString::fromStdString(configuration)});
    if (!daemon_.waitForStarted() || !daemon_.waitForReadyRead()) {
        std::fputs("dbus-daemon does not start\n", stderr);
        std::abort();
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", daemon_.readLine().trimmed());
}

PrivateBus::~PrivateBus() {
    daemon_.kill();
    daemon_.waitForFinished();
}

} // namespace orvalen::test
