#include "tests/program/listdriver.h"

#include "lib/base/handles.h"
#include "resources/ids.h"

#include <commctrl.h>

namespace driver {
namespace {

/// Memory in the process of a window, for messages with pointers.
class RemoteMemory {
public:
    RemoteMemory(HWND window, std::size_t size) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process_.reset(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
        address_ =
            static_cast<char*>(VirtualAllocEx(process_.get(), nullptr, size, MEM_COMMIT, PAGE_READWRITE));
    }
    ~RemoteMemory() { VirtualFreeEx(process_.get(), address_, 0, MEM_RELEASE); }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    char* address() const { return address_; }

    bool write(const void* data, std::size_t size, std::size_t offset = 0) const {
        return WriteProcessMemory(process_.get(), address_ + offset, data, size, nullptr) != 0;
    }
    bool read(void* data, std::size_t size, std::size_t offset = 0) const {
        return ReadProcessMemory(process_.get(), address_ + offset, data, size, nullptr) != 0;
    }

private:
    base::KernelHandle process_;
    char* address_ = nullptr;
};

LPARAM pointParameter(int x, int y) {
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

} // namespace

ListDriver::ListDriver(HWND mainWindow)
    : list_(GetDlgItem(mainWindow, IDC_SCHEDULE_LIST)), header_(ListView_GetHeader(list_)) {}

std::vector<std::string> ListDriver::headers() const {
    constexpr std::size_t textSize = 64;
    std::vector<std::string> texts;
    const RemoteMemory memory(header_, sizeof(HDITEMA) + textSize);
    const auto count = static_cast<WPARAM>(Header_GetItemCount(header_));
    for (WPARAM column = 0; column < count; ++column) {
        HDITEMA item{};
        item.mask = HDI_TEXT;
        item.pszText = memory.address() + sizeof(item);
        item.cchTextMax = textSize;
        memory.write(&item, sizeof(item));
        SendMessageA(header_, HDM_GETITEMA, column, reinterpret_cast<LPARAM>(memory.address()));
        char text[textSize]{};
        memory.read(text, sizeof(text) - 1, sizeof(item));
        texts.emplace_back(text);
    }
    return texts;
}

int ListDriver::rowCount() const {
    return ListView_GetItemCount(list_);
}

std::string ListDriver::cell(int row, int column, std::size_t bufferSize) const {
    const RemoteMemory memory(list_, sizeof(LVITEMA) + bufferSize);
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = memory.address() + sizeof(item);
    item.cchTextMax = static_cast<int>(bufferSize);
    memory.write(&item, sizeof(item));
    SendMessageA(list_, LVM_GETITEMTEXTA, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(memory.address()));
    std::string text(bufferSize, '\0');
    memory.read(text.data(), text.size(), sizeof(item));
    return text.substr(0, text.find('\0'));
}

std::vector<std::string> ListDriver::rowTexts(int row) const {
    std::vector<std::string> texts;
    for (int column = 0; column < Header_GetItemCount(header_); ++column)
        texts.push_back(cell(row, column));
    return texts;
}

std::vector<std::string> ListDriver::columnTexts(int column) const {
    std::vector<std::string> texts;
    for (int row = 0; row < rowCount(); ++row)
        texts.push_back(cell(row, column));
    return texts;
}

void ListDriver::setState(int row, UINT state, UINT mask) const {
    const RemoteMemory memory(list_, sizeof(LVITEMA));
    LVITEMA item{};
    item.state = state;
    item.stateMask = mask;
    memory.write(&item, sizeof(item));
    SendMessageA(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(memory.address()));
}

void ListDriver::select(const std::vector<int>& rows) const {
    constexpr int every = -1;
    setState(every, 0, LVIS_SELECTED | LVIS_FOCUSED);
    for (const int row : rows)
        setState(row, LVIS_SELECTED, LVIS_SELECTED);
    if (!rows.empty())
        setState(rows.front(), LVIS_FOCUSED, LVIS_FOCUSED);
}

void ListDriver::selectAll() const {
    setState(-1, LVIS_SELECTED, LVIS_SELECTED);
}

std::vector<int> ListDriver::selectedRows() const {
    std::vector<int> rows;
    // A destroyed list always answers 0, which ends the loop.
    for (int row = -1, next = 0; (next = ListView_GetNextItem(list_, row, LVNI_SELECTED)) > row; row = next)
        rows.push_back(next);
    return rows;
}

int ListDriver::focusedRow() const {
    return ListView_GetNextItem(list_, -1, LVNI_FOCUSED);
}

void ListDriver::clickHeader(int column) const {
    const RemoteMemory memory(header_, sizeof(RECT));
    SendMessageA(header_, HDM_GETITEMRECT, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(memory.address()));
    RECT place{};
    memory.read(&place, sizeof(place));
    const LPARAM middle = pointParameter((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    SendMessageA(header_, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    SendMessageA(header_, WM_LBUTTONUP, 0, middle);
}

int ListDriver::sortArrow(int column) const {
    const RemoteMemory memory(header_, sizeof(HDITEMA));
    HDITEMA item{};
    item.mask = HDI_FORMAT;
    memory.write(&item, sizeof(item));
    SendMessageA(header_, HDM_GETITEMA, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(memory.address()));
    memory.read(&item, sizeof(item));
    return item.fmt & (HDF_SORTUP | HDF_SORTDOWN);
}

int ListDriver::columnWidth(int column) const {
    return ListView_GetColumnWidth(list_, column);
}

void ListDriver::setColumnWidth(int column, int width) const {
    ListView_SetColumnWidth(list_, column, width);
}

void ListDriver::pressKey(WPARAM key) const {
    PostMessageA(list_, WM_KEYDOWN, key, 1);
    PostMessageA(list_, WM_KEYUP, key, 1);
}

RECT ListDriver::rowPlace(int row) const {
    const RemoteMemory memory(list_, sizeof(RECT));
    RECT place{};
    place.left = LVIR_BOUNDS;
    memory.write(&place, sizeof(place));
    SendMessageA(list_, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(memory.address()));
    memory.read(&place, sizeof(place));
    return place;
}

void ListDriver::doubleClickRow(int row) const {
    const RECT place = rowPlace(row);
    const LPARAM point = pointParameter(place.left + 10, (place.top + place.bottom) / 2);
    PostMessageA(list_, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageA(list_, WM_LBUTTONUP, 0, point);
    PostMessageA(list_, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    PostMessageA(list_, WM_LBUTTONUP, 0, point);
}

} // namespace driver
