#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvalen::test {

/// The system calls that read and write files.
enum class Call {
    open,
    status,
    read,
    reserve,
    write,
    truncate,
    permissions,
    sync,
    close,
    rename,
    remove,
    openFolder
};
std::vector<Call> allCalls();

struct Fault {
    enum class Way {
        error,            ///< the call fails
        halfThenContinue, ///< the call does half of its work and later calls do the rest
        halfThenFail,     ///< the call does half of its work and all later ones fail (a full disk)
    };
    Call call;
    int number; ///< number of the call, counted from 0
    Way way = Way::error;
    int error = 0; ///< errno of the failing call
};

/// Returns a text for failed tests: "write 1: No space left on device".
std::string describe(const Fault& fault);

/// While this object exists, counts the system calls on certain files and makes one of them fail. This
/// includes calls by libraries. Only one object at a time.
class FailingCalls {
public:
    /// Watches the files whose paths start with one of `pathBeginnings`.
    explicit FailingCalls(std::vector<std::string> pathBeginnings, std::optional<Fault> fault = {});
    ~FailingCalls();
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    /// Returns the number of calls of each kind, in the order of allCalls().
    std::vector<int> counts() const;
};

/// Returns all faults for the counted calls: each error, and short reads and writes.
std::vector<Fault> faultsOf(const std::vector<int>& counts, const std::vector<int>& errors);

} // namespace orvalen::test
