#include "lib/base/filetypes.h"

#include "lib/base/paths.h"
#include "lib/base/placeholders.h"
#include "lib/base/registry.h"
#include "lib/base/sourceregistration.h"

#include <windows.h>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

std::string fileTypeOf(const std::string& fileName) {
    return getString(HKEY_CLASSES_ROOT, "." + extensionOf(fileName));
}

std::string associatedCommand(const std::string& fileName, const std::string& verb) {
    // The backslash at the end selects the command key's default value.
    const std::string path = fileTypeOf(fileName) + "\\shell\\" + verb + "\\command\\";
    return withoutPlaceholders(getString(HKEY_CLASSES_ROOT, path));
}

} // namespace base
