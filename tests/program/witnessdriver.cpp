#include "tests/program/witnessdriver.h"

#include "tests/program/scheduledriver.h"

#include <array>
#include <span>

namespace driver {
namespace {

HMODULE witnessLibrary() {
    static const HMODULE library = LoadLibraryA((buildFolder() + "tests\\program\\witness.dll").c_str());
    return library;
}

HOOKPROC procedure(const char* name) {
    return reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(GetProcAddress(witnessLibrary(), name)));
}

SeenItem seen(const witness::MenuItem& item) {
    // Of a separator, platforms differ about whether it is grey.
    const bool enabled = item.command == 0 || (item.state & MFS_GRAYED) == 0;
    return {item.command, item.text.data(), enabled, (item.state & MFS_DEFAULT) != 0};
}

} // namespace

void PrintTo(const SeenItem& item, std::ostream* out) {
    *out << item.command << " '" << item.text << "'" << (item.enabled ? "" : " grey")
         << (item.isDefault ? " default" : "");
}

WitnessDriver::WitnessDriver(HWND mainWindow, HWND painted)
    : mainWindow_(mainWindow),
      memory_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(witness::Notes),
                                 witness::memoryName)),
      notes_(static_cast<witness::Notes*>(
          MapViewOfFile(memory_.get(), FILE_MAP_WRITE, 0, 0, sizeof(witness::Notes)))) {
    *notes_ = {};
    notes_->painted = painted;
    const DWORD thread = GetWindowThreadProcessId(mainWindow, nullptr);
    struct Hook {
        int kind;
        const char* procedure;
    };
    constexpr std::array hooks = {Hook{WH_CALLWNDPROC, "onSent"}, Hook{WH_GETMESSAGE, "onTaken"},
                                  Hook{WH_CALLWNDPROCRET, "onHandled"}};
    for (const Hook& hook : hooks)
        if (const HHOOK made =
                SetWindowsHookExA(hook.kind, procedure(hook.procedure), witnessLibrary(), thread))
            hooks_.push_back(made);
    // The library enters the process with the first message.
    SendMessageA(mainWindow, WM_NULL, 0, 0);
}

WitnessDriver::~WitnessDriver() {
    for (const HHOOK hook : hooks_)
        UnhookWindowsHookEx(hook);
    UnmapViewOfFile(notes_);
}

std::vector<SeenItem> WitnessDriver::waitForMenu(LONG before) const {
    if (!waitUntil([&] { return menus() > before; }))
        return {};
    std::vector<SeenItem> items;
    for (const witness::MenuItem& item :
         std::span(notes_->items).first(static_cast<std::size_t>(notes_->itemCount)))
        items.push_back(seen(item));
    waitUntil([&] { return isMenuOpen(); });
    closeMenu();
    return items;
}

void WitnessDriver::drop(const std::vector<std::string>& paths) const {
    std::string names;
    for (const std::string& path : paths)
        names.append(path).push_back('\0');
    notes_->dropped = {};
    names.copy(notes_->dropped.data(), notes_->dropped.size() - 1);
    perform(witness::Act::Drop, mainWindow_);
}

void WitnessDriver::perform(witness::Act act, HWND window) {
    SendMessageA(window, RegisterWindowMessageA(witness::actMessage), static_cast<WPARAM>(act), 0);
}

bool WitnessDriver::passTicks(LONG count) const {
    const LONG end = ticks() + count;
    return waitUntil([&] { return ticks() >= end; });
}

bool WitnessDriver::isMenuOpen() const {
    return (inputStateOf(mainWindow_).flags & GUI_INMENUMODE) != 0;
}

void WitnessDriver::closeMenu() const {
    PostMessageA(mainWindow_, WM_CANCELMODE, 0, 0);
    waitUntil([&] { return !isMenuOpen(); });
}

} // namespace driver
