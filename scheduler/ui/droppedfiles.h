// The files that the shell drops on a window.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace scheduler {

/// Their full paths in the order of the drop. The drop's handle is left alone.
std::vector<std::string> droppedFiles(HDROP drop);

} // namespace scheduler
