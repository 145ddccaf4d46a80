// The platform's open-file dialog. Its library loads a printing library, so it is loaded only on first use.
#pragma once

#include <windows.h>

#include <commdlg.h>

namespace framework {

/// Like GetOpenFileNameA; also false if the library cannot be loaded.
[[nodiscard]] bool openFileDialog(OPENFILENAMEA& request);

/// CommDlgExtendedError of the last dialog: 0 if the user cancelled.
DWORD fileDialogError();

} // namespace framework
