#pragma once

#include "faults/FailingCalls.h"
#include "faults/Flows.h"

#include <optional>
#include <string>
#include <vector>

namespace orvalen::test {

/// One trial of a flow in a world of its own.
class Trial {
public:
    /// With the file that is to be read, or an old one to be replaced, longer than anything that takes its
    /// place in a world that nobody lengthened; or none there.
    Trial(const Flow& flow, bool isOldThere);

    void act(const std::optional<Fault>& fault = {});

    /// The first file there that begins with the flow's path.
    std::optional<std::string> content();
    /// The console lines, {} for the path.
    std::vector<std::string> lines();
    /// How many files stand beside the flow's.
    std::size_t neighbours();

    World world;
    std::string before; ///< the state
    std::string state;  ///< after act()
    std::optional<std::string> contentBefore;
    std::vector<int> counts; ///< of the calls, after act()

private:
    void put(const std::string& bytes);

    const Flow& flow_;
};

} // namespace orvalen::test
