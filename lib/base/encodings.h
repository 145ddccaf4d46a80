// Alphabets of transfer encodings: character i encodes the 6-bit value i.
#pragma once

#include <string_view>

namespace base {

extern const std::string_view base64Alphabet;   ///< RFC 4648, section 4
extern const std::string_view uuencodeAlphabet; ///< POSIX uuencode, with the backquote for 0
extern const std::string_view xxencodeAlphabet;
extern const std::string_view binhexAlphabet;           ///< BinHex 4.0, RFC 1741
extern const std::string_view lowerFirstBase64Alphabet; ///< lower-case letters first; '@' for l, '#' for O

} // namespace base
