#include "lib/base/filetypes.h"

#include "lib/base/dateparsing.h"
#include "lib/base/paths.h"
#include "lib/base/regexp.h"
#include "lib/base/registry.h"
#include "lib/base/strings.h"

#include <windows.h>

#include <string_view>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

std::string fileTypeOf(const std::string& fileName) {
    return getString(HKEY_CLASSES_ROOT, "." + extensionOf(fileName));
}

std::string associatedCommand(const std::string& fileName, const std::string& verb) {
    static const Expression placeholder("%[1-9]");
    // The backslash at the end names the command key's default value.
    const std::string path = fileTypeOf(fileName) + "\\shell\\" + verb + "\\command\\";
    std::string command = placeholder.removeFrom(getString(HKEY_CLASSES_ROOT, path));
    constexpr std::string_view emptyQuotes = "\"\"";
    for (std::size_t at = command.find(emptyQuotes); at != std::string::npos;
         at = command.find(emptyQuotes, at))
        command.erase(at, emptyQuotes.size());
    trimRight(command, whitespace);
    trimLeft(command, whitespace);
    return command;
}

} // namespace base
