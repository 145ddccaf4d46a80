#include "lib/base/encodings.h"

#include "lib/base/sourceregistration.h"

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

constinit const std::string_view base64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constinit const std::string_view uuencodeAlphabet =
    "`!\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_";
constinit const std::string_view xxencodeAlphabet =
    "+-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constinit const std::string_view binhexAlphabet =
    "!\"#$%&'()*+,-012345689@ABCDEFGHIJKLMNPQRSTUVXYZ[`abcdefhijklmpqr";
constinit const std::string_view lowerFirstBase64Alphabet =
    "abcdefghijk@mnopqrstuvwxyzABCDEFGHIJKLMN#PQRSTUVWXYZ0123456789+/";

} // namespace base
