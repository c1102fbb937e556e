#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvalen::test {

/// The system calls by which files are read and written.
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
        halfThenContinue, ///< the call does half of its work and later calls do the rest: a short read or
                          ///< write
        halfThenFail,     ///< the call does half of its work and all later ones fail: a disk that fills up
    };
    Call call;
    int number; ///< which of these calls, counted from 0
    Way way = Way::error;
    int error = 0; ///< errno of the failing call
};

/// For the trace of a failed test: "write 1: No space left on device".
std::string describe(const Fault& fault);

/// While it exists, counts this program's calls on certain files and makes one of them fail, whether our
/// code, the standard library or the database makes the call. One instance at a time.
class FailingCalls {
public:
    /// Watches the files whose paths begin with one of these.
    explicit FailingCalls(std::vector<std::string> pathBeginnings, std::optional<Fault> fault = {});
    ~FailingCalls();
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    /// How often each call was made so far, in the order of allCalls().
    std::vector<int> counts() const;
};

/// Every fault of every call that was counted: each error in turn; of reads and writes also the short ones.
std::vector<Fault> faultsOf(const std::vector<int>& counts, const std::vector<int>& errors);

} // namespace orvalen::test
