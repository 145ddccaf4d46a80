// What the tests of the path field share: a dialog with such a field, and a simulated file dialog.
#pragma once

#include "scheduler/ui/framework/browseedit.h"
#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/filedialog.h"
#include "tests/scheduler/ui/framework/testdialogs.h"
#include "tests/scheduler/ui/simulatedmessagebox.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace test {

inline std::function<bool(OPENFILENAMEA&)> simulatedDialog;
inline DWORD simulatedError = 0;

} // namespace test

// Replaces the platform's dialog. Include this in one source per program only.
namespace framework {

bool openFileDialog(OPENFILENAMEA& request) {
    return test::simulatedDialog(request);
}

DWORD fileDialogError() {
    return test::simulatedError;
}

} // namespace framework

namespace test {

class BrowseDialog : public framework::Dialog {
public:
    explicit BrowseDialog(std::string& path)
        : Dialog(IDD_CONTROLS), edit(*this, IDC_BROWSE, framework::bindText(path)) {
        edit.setButtonText("&Browse...");
    }
    framework::BrowseEdit edit;
};

class BrowseEditTest : public testing::Test {
protected:
    void SetUp() override {
        shownMessages.clear();
        simulatedError = 0;
        ASSERT_TRUE(dialog.open(nullptr));
    }

    HWND handle() const { return dialog.edit.handle(); }
    HWND button() const { return GetWindow(handle(), GW_HWNDNEXT); }

    /// Presses the button; the user answers with the dialog's buffer filled so.
    void choose(const std::string& answer) {
        simulatedDialog = [&](OPENFILENAMEA& request) {
            answer.copy(request.lpstrFile, request.nMaxFile);
            return true;
        };
        SendMessageA(button(), BM_CLICK, 0, 0);
    }

    static RECT placeOf(HWND window) {
        RECT place{};
        GetWindowRect(window, &place);
        MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }

    std::string path = "C:\\before.kra";
    BrowseDialog dialog{path};
};

} // namespace test
