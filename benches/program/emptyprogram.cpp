// A baseline: a window with the same list control and timers as the scheduler's, but no function.
// usage: emptyprogram ROWS [icon]
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <cstdlib>
#include <cstring>

namespace {

constexpr UINT engineTimerMilliseconds = 1000;
constexpr UINT pumpTimerMilliseconds = 200;

HWND list = nullptr;

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        SetWindowPos(list, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    case WM_NOTIFY: {
        auto& request = *reinterpret_cast<NMLVDISPINFOA*>(lParam);
        if (request.hdr.code == LVN_GETDISPINFOA && (request.item.mask & LVIF_TEXT))
            lstrcpynA(request.item.pszText, "Run normally", request.item.cchTextMax);
        return 0;
    }
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

void makeList(HWND parent, int rows) {
    const INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    list = CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA, 0, 0, 0,
                           0, parent, nullptr, GetModuleHandleA(nullptr), nullptr);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    char header[] = "Column";
    for (std::size_t column = 0; column < scheduler::columnCount; ++column) {
        LVCOLUMNA description{};
        description.mask = LVCF_TEXT | LVCF_WIDTH;
        description.pszText = header;
        description.cx = 120;
        SendMessageA(list, LVM_INSERTCOLUMNA, column, reinterpret_cast<LPARAM>(&description));
    }
    ListView_SetItemCountEx(list, rows, 0);
}

void addIcon(HWND window) {
    NOTIFYICONDATAA icon{};
    icon.cbSize = sizeof(icon);
    icon.hWnd = window;
    icon.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    icon.uCallbackMessage = WM_APP;
    icon.hIcon = LoadIconA(nullptr, IDI_APPLICATION);
    lstrcpyA(icon.szTip, "Empty");
    Shell_NotifyIconA(NIM_ADD, &icon);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int showCommand) {
    WNDCLASSEXA description{};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = windowProcedure;
    description.hInstance = instance;
    description.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    description.lpszClassName = "empty program";
    RegisterClassExA(&description);
    const HWND window = CreateWindowExA(0, description.lpszClassName, "Empty",
                                        WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                                        CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
    makeList(window, std::atoi(commandLine));
    RECT area{};
    GetClientRect(window, &area);
    SendMessageA(window, WM_SIZE, SIZE_RESTORED, MAKELPARAM(area.right, area.bottom));
    if (std::strstr(commandLine, "icon"))
        addIcon(window);
    ShowWindow(window, showCommand);
    UpdateWindow(window);
    SetTimer(window, 1, engineTimerMilliseconds, nullptr);
    SetTimer(nullptr, 0, pumpTimerMilliseconds, nullptr);
    MSG message{};
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    return 0;
}
