#include "lib/base/currentdirectory.h"

#include "lib/base/sourceregistration.h"

#include <windows.h>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

CurrentDirectoryGuard::CurrentDirectoryGuard() : directory_(GetCurrentDirectoryW(0, nullptr), L'\0') {
    const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(directory_.size()), directory_.data());
    directory_.resize(length < directory_.size() ? length : 0);
}

CurrentDirectoryGuard::~CurrentDirectoryGuard() {
    if (!directory_.empty())
        SetCurrentDirectoryW(directory_.c_str());
}

} // namespace base
