#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen::test {

/// What goes wrong in one system call on the watched files.
struct Fault {
    std::size_t number = std::string::npos; ///< number of the call, counted from 0; the default: none
    std::string_view call = {};             ///< its name
    int error = 0;                          ///< errno of the failing call
    /// The call reads or writes half of the bytes. Without `error`, later calls do the rest; with it, all
    /// later writes fail (a full disk).
    bool half = false;
};
std::ostream& operator<<(std::ostream& stream, const Fault& fault);

/// Returns all faults for these calls: several errors, interruptions, and short reads and writes.
std::vector<Fault> faultsOf(const std::vector<std::string_view>& calls);

/// While this object exists, records the system calls on certain files and makes one of them fail. This
/// includes calls by libraries. Only one object at a time.
class FailingCalls {
public:
    /// Watches the files whose paths start with one of `pathBeginnings`.
    explicit FailingCalls(std::vector<std::string> pathBeginnings, const Fault& fault);
    ~FailingCalls();
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    /// Returns the names of the calls so far.
    std::vector<std::string_view> calls() const;
};

} // namespace orvalen::test
