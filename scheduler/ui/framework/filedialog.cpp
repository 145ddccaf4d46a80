#include "scheduler/ui/framework/filedialog.h"

#include "lib/base/opsys.h"

#include <cderr.h>

namespace framework {
namespace {

struct FileDialogs {
    decltype(&GetOpenFileNameA) open = nullptr;
    decltype(&CommDlgExtendedError) lastError = nullptr;
};

template<class Function>
void lookUp(Function& function, HMODULE library, const char* name) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

/// The functions are null if the library cannot be loaded; the next call tries again.
const FileDialogs& fileDialogs() {
    static FileDialogs loaded;
    if (!loaded.open || !loaded.lastError)
        if (const HMODULE library = base::loadSystemLibrary("comdlg32.dll")) {
            lookUp(loaded.open, library, "GetOpenFileNameA");
            lookUp(loaded.lastError, library, "CommDlgExtendedError");
        }
    return loaded;
}

} // namespace

bool openFileDialog(OPENFILENAMEA& request) {
    const FileDialogs& dialogs = fileDialogs();
    return dialogs.open && dialogs.open(&request);
}

DWORD fileDialogError() {
    const FileDialogs& dialogs = fileDialogs();
    return dialogs.lastError ? dialogs.lastError() : DWORD{CDERR_INITIALIZATION};
}

} // namespace framework
