#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvalen::test {

/// The calls into the system by which files are read and written.
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
    makeFolder,
    openFolder
};
const char* nameOf(Call call);
std::vector<Call> allCalls();

/// What goes wrong.
struct Fault {
    enum class Way {
        error,       ///< the call fails
        halfThenOn,  ///< it does half of its work, and the next one the rest: a short read or write
        halfThenEnd, ///< it does half of its work, and all later ones fail: a disk that fills up
    };
    Call call;
    int number; ///< which of these calls, counted from 0
    Way way = Way::error;
    int error = 0;
};

/// While it stands, the calls of this program on certain files are counted, and one of them goes wrong. What
/// they are made by does not matter: our code, the standard library or the database. One at a time.
class FailingCalls {
public:
    /// Watches the files whose paths begin with one of these.
    explicit FailingCalls(std::vector<std::string> places, std::optional<Fault> fault = {});
    ~FailingCalls();
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    int count(Call call) const;
};

} // namespace orvalen::test
