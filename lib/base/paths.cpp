#include "lib/base/paths.h"

#include "lib/base/sourceregistration.h"
#include "lib/base/strings.h"

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

/// The position after the last backslash or, if there is none, after the last slash.
std::size_t fileNameStart(std::string_view path) {
    std::size_t separator = path.rfind('\\');
    if (separator == std::string_view::npos)
        separator = path.rfind('/');
    return separator == std::string_view::npos ? 0 : separator + 1;
}

} // namespace

std::string fileNameOf(std::string_view path) {
    return std::string(path.substr(fileNameStart(path)));
}

std::string directoryOf(std::string_view path) {
    return std::string(path.substr(0, fileNameStart(path)));
}

std::string extensionOf(std::string_view path) {
    const std::string_view name = path.substr(fileNameStart(path));
    const std::size_t point = name.rfind('.');
    if (point == std::string_view::npos)
        return {};
    std::string extension(name.substr(point + 1));
    toLower(extension);
    return extension;
}

std::string baseNameOf(std::string_view path) {
    const std::string_view name = path.substr(fileNameStart(path));
    return std::string(name.substr(0, name.rfind('.')));
}

bool isDrivePath(std::string_view path) {
    return path.size() >= 3 && isLetter(path[0]) && path[1] == ':' && path[2] == '\\';
}

} // namespace base
