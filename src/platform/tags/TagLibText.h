#pragma once

#include <string>
#include <taglib/tstring.h>

namespace orvalen {

/// The text as valid UTF-8; half a character becomes U+FFFD.
std::string toUtf8(const TagLib::String& text);

/// The bytes up to the first zero: valid UTF-8 as it is, anything else as Latin-1.
TagLib::String fromUtf8OrLatin1(const TagLib::ByteVector& bytes);

} // namespace orvalen
