#pragma once

#include "lib/base/opsys.h"
#include "scheduler/ui/framework/controlhost.h"
#include "scheduler/ui/framework/windowclass.h"
#include "tests/scheduler/ui/editoruser.h"
#include "tests/scheduler/ui/framework/pumping.h"

#include <string>
#include <vector>

namespace test {

/// Hosts a page in a hidden plain window.
class PageHost : public framework::Window {
public:
    explicit PageHost(framework::ControlHost& page) : page_(page) {
        framework::WindowClass windowClass;
        framework::WindowParameters parameters;
        parameters.style = WS_POPUP;
        create(windowClass, parameters);
        CreateDialogParamA(base::moduleHandle(), MAKEINTRESOURCEA(page.templateId()), handle(),
                           &framework::dialogProcedure, reinterpret_cast<LPARAM>(&page));
    }

    void onIdle() override { page_.onIdle(); }

    HWND item(int id) const { return GetDlgItem(page_.handle(), id); }

    // IsWindowVisible() would be false because the host is hidden.
    bool isVisible(int id) const { return (GetWindowLongA(item(id), GWL_STYLE) & WS_VISIBLE) != 0; }
    bool isEnabled(int id) const { return IsWindowEnabled(item(id)) != FALSE; }
    bool isChecked(int id) const { return SendMessageA(item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }

    std::string text(int id) const { return base::windowText(item(id)); }
    void setText(int id, const std::string& text) const { SetWindowTextA(item(id), text.c_str()); }

    void click(int id) const {
        press(page_.handle(), id);
        pumpUntilIdle();
    }

    void type(int id, const char* keys) const {
        SendMessageA(item(id), EM_SETSEL, 0, -1);
        typeInto(item(id), keys);
    }

    std::vector<std::string> items(int id) const { return itemTexts(item(id)); }
    int selected(int id) const { return static_cast<int>(SendMessageA(item(id), CB_GETCURSEL, 0, 0)); }
    void choose(int id, int position) const {
        SendMessageA(item(id), CB_SETCURSEL, static_cast<WPARAM>(position), 0);
        SendMessageA(page_.handle(), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(item(id)));
        pumpUntilIdle();
    }

private:
    framework::ControlHost& page_;
};

} // namespace test
