// The platform's dialog for choosing files.
//
// Its library brings one for printing with it. A program that mostly waits has no use for either, so they are
// loaded when the dialog is first opened.
#pragma once

#include <windows.h>

#include <commdlg.h>

namespace framework {

/// As GetOpenFileNameA does; false, too, when the platform has no such dialog.
[[nodiscard]] bool openFileDialog(OPENFILENAMEA& request);

/// Why the last dialog gave no file, as CommDlgExtendedError says it: 0 when the user cancelled it.
DWORD fileDialogError();

} // namespace framework
