#include "scheduler/ui/droppedfiles.h"

namespace scheduler {

std::vector<std::string> droppedFiles(HDROP drop) {
    constexpr UINT countWanted = 0xFFFFFFFF;
    const UINT count = DragQueryFileA(drop, countWanted, nullptr, 0);
    std::vector<std::string> files;
    files.reserve(count);
    for (UINT index = 0; index < count; ++index) {
        std::string path(DragQueryFileA(drop, index, nullptr, 0), '\0');
        DragQueryFileA(drop, index, path.data(), static_cast<UINT>(path.size() + 1));
        files.push_back(std::move(path));
    }
    return files;
}

} // namespace scheduler
