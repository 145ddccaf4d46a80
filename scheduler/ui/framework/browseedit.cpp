#include "scheduler/ui/framework/browseedit.h"

#include "lib/base/currentdirectory.h"
#include "lib/base/opsys.h"
#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/browselayout.h"
#include "scheduler/ui/framework/chosenfiles.h"
#include "scheduler/ui/framework/filedialog.h"
#include "scheduler/ui/framework/textextent.h"

#include <cderr.h>

namespace framework {
namespace {

// Buffer sizes in bytes for the first and the second attempt. The dialog reports the size that it needs, but
// in 16 bits only, so the number can be wrong.
constexpr std::size_t usualAnswerSize = 64 * 1024;
constexpr std::size_t maxAnswerSize = 4 * 1024 * 1024;

CALLED_BY_PLATFORM UINT_PTR CALLBACK centreWhenReady(HWND hook, UINT id, WPARAM, LPARAM lParam) noexcept {
    // The hook's window is a child of the dialog.
    if (id == WM_NOTIFY && reinterpret_cast<const OFNOTIFYA*>(lParam)->hdr.code == CDN_INITDONE)
        centreWindow(GetParent(hook));
    return 0;
}

/// Opens the dialog with `text` as the initial choice. Returns its answer; empty if cancelled or on failure.
std::string askForFiles(OPENFILENAMEA request, std::string text) {
    // The dialog changes the current directory, which started programs would inherit.
    const base::CurrentDirectoryGuard directoryGuard;
    std::size_t size = usualAnswerSize;
    for (;;) {
        std::string answer(size, '\0');
        text.copy(answer.data(), answer.size() - 1);
        request.lpstrFile = answer.data();
        request.nMaxFile = static_cast<DWORD>(answer.size());
        if (openFileDialog(request))
            return answer;
        const DWORD error = fileDialogError();
        if (error == FNERR_INVALIDFILENAME && !text.empty())
            text.clear(); // the dialog rejects an invalid file name, such as the text of several files
        else if (error == FNERR_BUFFERTOOSMALL && size < maxAnswerSize)
            size = maxAnswerSize; // the choice is lost, so the user is asked again
        else
            return {};
    }
}

void place(HWND window, const RECT& place, HWND behind) {
    SetWindowPos(window, behind, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOACTIVATE | (behind ? 0U : UINT{SWP_NOZORDER}));
}

} // namespace

BrowseEdit::BrowseEdit(ControlHost& host, int id, Binding binding)
    : Edit(host, id, std::move(binding)), button_(host, browseButtonIdOf(id), [this] { browse(); }) {}

void BrowseEdit::setButtonText(std::string text) {
    buttonText_ = std::move(text);
    if (!handle())
        return;
    button_.setText(buttonText_);
    layOut();
}

void BrowseEdit::setFilter(const std::string& sections) {
    filter_ = dialogFilter(sections);
}

void BrowseEdit::setCheck(std::function<bool(const std::string&)> isAcceptable, std::string message) {
    isAcceptable_ = std::move(isAcceptable);
    message_ = std::move(message);
}

void BrowseEdit::onAttached() {
    Edit::onAttached();
    GetWindowRect(handle(), &place_);
    MapWindowPoints(nullptr, GetParent(handle()), reinterpret_cast<POINT*>(&place_), 2);
    createButton();
    layOut();
}

void BrowseEdit::createButton() {
    const DWORD style = WS_CHILD | WS_TABSTOP | BS_PUSHBUTTON | (isVisible() ? DWORD{WS_VISIBLE} : 0) |
                        (isEnabled() ? 0 : DWORD{WS_DISABLED});
    const HWND button = CreateWindowExA(
        0, "BUTTON", buttonText_.c_str(), style, 0, 0, 0, 0, GetParent(handle()),
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(button_.id())), base::moduleHandle(), nullptr);
    SendMessageA(button, WM_SETFONT, static_cast<WPARAM>(send(WM_GETFONT)), FALSE);
    static_cast<void>(button_.attach(button));
}

void BrowseEdit::layOut() {
    const BrowseLayout layout = layOutBrowseEdit(place_, TextExtent(handle()).of(buttonText_).cx);
    place(handle(), layout.edit, nullptr);
    place(button_.handle(), layout.button, handle()); // directly after the edit in the tab order
}

Handled BrowseEdit::onMessage(const Message& message) {
    if (message.id == WM_ENABLE)
        button_.setEnabled(message.wParam != FALSE);
    else if (message.id == WM_SHOWWINDOW && message.lParam == 0) // sent by ShowWindow for this edit
        button_.setVisible(message.wParam != FALSE);
    return Edit::onMessage(message);
}

void BrowseEdit::browse() {
    OPENFILENAMEA request{};
    request.lStructSize = sizeof(request);
    request.hwndOwner = GetParent(handle());
    request.lpstrFilter = filter_.empty() ? nullptr : filter_.c_str();
    request.lpstrTitle = "Browse";
    // Only an Explorer-style dialog sends CDN_INITDONE to its hook.
    request.Flags = flags_ | OFN_EXPLORER | OFN_ENABLEHOOK;
    request.lpfnHook = &centreWhenReady;
    std::vector<std::string> files = chosenFiles(askForFiles(request, text()));
    if (files.empty())
        return;
    setText(chosenFilesText(files));
    chosen_ = std::move(files);
}

bool BrowseEdit::check() {
    if (!isAcceptable_ || isAcceptable_(text()))
        return true;
    reportInvalid(message_);
    return false;
}

} // namespace framework
