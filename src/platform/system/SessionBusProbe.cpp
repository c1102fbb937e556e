#include "platform/system/SessionBusProbe.h"

#include "core/Descriptor.h"
#include "core/Url.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvalen {
namespace {

using Clock = std::chrono::steady_clock;

/// Returns the value of `key` in an address like "unix:path=/run/bus,guid=0123".
std::optional<std::string> valueOf(std::string_view address, std::string_view key) {
    address.remove_prefix(std::min(address.size(), address.find(':') + 1));
    while (!address.empty()) {
        const std::string_view pair = address.substr(0, address.find(','));
        address.remove_prefix(std::min(address.size(), pair.size() + 1));
        if (pair.starts_with(key) && pair.substr(key.size()).starts_with('='))
            return percentDecoded(pair.substr(key.size() + 1));
    }
    return std::nullopt;
}

/// Returns the socket's name for the kernel: a path, or a zero byte and an abstract name.
std::optional<std::string> socketName(std::string_view address) {
    if (!address.starts_with("unix:"))
        return std::nullopt;
    if (auto path = valueOf(address, "path"))
        return path;
    if (const auto abstract = valueOf(address, "abstract"))
        return '\0' + *abstract;
    return std::nullopt;
}

/// Returns the addresses that the environment names, else the standard address in the user's runtime folder.
std::string sessionAddresses() {
    if (const char* named = std::getenv("DBUS_SESSION_BUS_ADDRESS"); named && *named)
        return named;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    return runtime && *runtime ? "unix:path=" + std::string(runtime) + "/bus" : std::string();
}

class Connection {
public:
    /// Returns 0 or the error number; EAGAIN if too many connections wait to be accepted.
    int open(const std::string& name) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (name.size() >= sizeof address.sun_path)
            return ENAMETOOLONG;
        std::memcpy(address.sun_path, name.data(), name.size());
        const bool isAbstract = name.starts_with('\0');
        const auto length = offsetof(sockaddr_un, sun_path) + name.size() + (isAbstract ? 0 : 1);
        const auto* plain = reinterpret_cast<const sockaddr*>(&address);
        return ::connect(socket_.number(), plain, static_cast<socklen_t>(length)) == 0 ? 0 : errno;
    }

    bool send(std::string_view bytes) const {
        return ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(bytes.size());
    }

    /// Returns whether bytes arrive before the deadline.
    bool receives(Clock::time_point deadline) const {
        using std::chrono::milliseconds;
        for (;;) {
            const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
            pollfd waiting{socket_.number(), POLLIN, 0};
            const int ready = ::poll(&waiting, 1, std::max(0, static_cast<int>(left.count())));
            if (ready < 0 && errno == EINTR)
                continue;
            char byte = 0;
            return ready > 0 && ::recv(socket_.number(), &byte, 1, 0) == 1;
        }
    }

private:
    Descriptor socket_{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
};

/// The first line of the authentication: a zero byte, then the user number as hexadecimal ASCII digits.
std::string greeting() {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string line("\0AUTH EXTERNAL ", 15);
    for (const char digit : std::to_string(::geteuid())) {
        line += digits[static_cast<unsigned char>(digit) >> 4U];
        line += digits[static_cast<unsigned char>(digit) & 15U];
    }
    return line + "\r\n";
}

} // namespace

BusAnswer probeSessionBus(std::chrono::milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    const std::string addresses = sessionAddresses();
    for (std::string_view rest = addresses; !rest.empty();) {
        const std::string_view address = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(rest.size(), address.size() + 1));
        const auto name = socketName(address);
        if (!name)
            continue;
        const Connection connection;
        const int error = connection.open(*name);
        if (error == EAGAIN)
            return BusAnswer::silent;
        if (error == 0)
            return connection.send(greeting()) && connection.receives(deadline) ? BusAnswer::answers
                                                                                : BusAnswer::silent;
    }
    return BusAnswer::none;
}

} // namespace orvalen
