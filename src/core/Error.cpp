#include "core/Error.h"

#include <system_error>

namespace orvalen {

tl::unexpected<Error> systemFailure(int errorNumber) {
    return failure(std::generic_category().message(errorNumber));
}

} // namespace orvalen
