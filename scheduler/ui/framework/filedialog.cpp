#include "scheduler/ui/framework/filedialog.h"

#include <bit>
#include <cderr.h>

namespace framework {
namespace {

struct FileDialogs {
    decltype(&GetOpenFileNameA) open = nullptr;
    decltype(&CommDlgExtendedError) lastError = nullptr;
};

template<class Function>
void find(Function& function, HMODULE library, const char* name) {
    function = std::bit_cast<Function>(GetProcAddress(library, name));
}

FileDialogs load() {
    FileDialogs dialogs;
    // Kept for as long as the program runs.
    if (const HMODULE library = LoadLibraryExA("comdlg32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
        find(dialogs.open, library, "GetOpenFileNameA");
        find(dialogs.lastError, library, "CommDlgExtendedError");
    }
    return dialogs;
}

const FileDialogs& dialogs() {
    static const FileDialogs loaded = load();
    return loaded;
}

} // namespace

bool openFileDialog(OPENFILENAMEA& request) {
    return dialogs().open && dialogs().open(&request);
}

DWORD fileDialogError() {
    return dialogs().lastError ? dialogs().lastError() : DWORD{CDERR_INITIALIZATION};
}

} // namespace framework
