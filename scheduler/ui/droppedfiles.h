#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace scheduler {

/// The full paths of the dropped files, in order. Does not free the drop handle.
std::vector<std::string> droppedFiles(HDROP drop);

} // namespace scheduler
