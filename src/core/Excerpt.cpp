#include "core/Excerpt.h"

namespace orvalen {

std::string excerpt(std::string_view text, std::size_t characters) {
    if (text.size() <= characters)
        return std::string(text);
    std::size_t end = 0;
    for (std::size_t count = 0; end < text.size(); ++end) {
        const bool beginsCharacter = (static_cast<unsigned char>(text[end]) & 0xC0U) != 0x80U;
        if (beginsCharacter && count++ == characters)
            return std::string(text.substr(0, end)) + "…";
    }
    return std::string(text);
}

} // namespace orvalen
