#include "platform/system/SessionBusProbe.h"

#include "support/TemporaryFolder.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;

/// A socket that accepts connections like a bus and answers only if the test says so.
class Listener {
public:
    explicit Listener(const std::string& path) : socket_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.data(), path.size());
        EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(socket_, 4), 0);
    }
    ~Listener() { ::close(socket_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Accepts one client, sends `answer`, and returns the client's first line.
    std::string answerOne(const char* answer) const {
        const int client = ::accept(socket_, nullptr, nullptr);
        char bytes[200];
        const auto length = ::read(client, bytes, sizeof bytes);
        EXPECT_EQ(::write(client, answer, std::strlen(answer)), static_cast<ssize_t>(std::strlen(answer)));
        ::close(client);
        return {bytes, static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
    }

private:
    int socket_;
};

class SessionBusProbe : public testing::Test {
protected:
    ~SessionBusProbe() override {
        ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
        ::unsetenv("XDG_RUNTIME_DIR");
    }
    static void name(const std::string& addresses) {
        ::setenv("DBUS_SESSION_BUS_ADDRESS", addresses.c_str(), 1);
    }

    TemporaryFolder folder;
};

TEST_F(SessionBusProbe, TellsAMissingBusFromASilentOne) {
    const Listener silent(folder.path("bus"));
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_EQ(probeSessionBus(20ms), BusAnswer::none);
    ::setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    EXPECT_EQ(probeSessionBus(20ms), BusAnswer::silent) << "found in the runtime folder";
    name("unix:path=" + folder.path("missing"));
    EXPECT_EQ(probeSessionBus(20ms), BusAnswer::none);
    name("tcp:host=localhost;unix:path=" + folder.path("missing") +
         ";unix:guid=1,path=" + folder.path("b%75s"));
    EXPECT_EQ(probeSessionBus(20ms), BusAnswer::silent);
}

TEST_F(SessionBusProbe, AuthenticatesAsTheUser) {
    const Listener bus(folder.path("bus"));
    name("unix:path=" + folder.path("bus"));
    std::string request;
    std::thread answering([&] { request = bus.answerOne("OK 0123\r\n"); });
    EXPECT_EQ(probeSessionBus(5s), BusAnswer::answers);
    answering.join();
    EXPECT_TRUE(request.starts_with(std::string("\0AUTH EXTERNAL 3", 16))) << request;
    EXPECT_TRUE(request.ends_with("\r\n"));
}

} // namespace
} // namespace orvalen::test
