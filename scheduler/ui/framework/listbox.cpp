#include "scheduler/ui/framework/listbox.h"

#include "scheduler/ui/framework/textextent.h"

#include <algorithm>

namespace framework {
namespace {

// In pixels.
constexpr int textIndent = 2;
constexpr int verticalMargin = 1; // above and below the text

struct ItemColours {
    int text = COLOR_WINDOWTEXT;
    int background = COLOR_WINDOW;
};

ItemColours coloursOf(const DRAWITEMSTRUCT& item, int ownTextColour) {
    if (item.itemState & ODS_DISABLED)
        return {COLOR_GRAYTEXT, COLOR_BTNFACE};
    if (item.itemState & ODS_SELECTED)
        return {COLOR_HIGHLIGHTTEXT, COLOR_HIGHLIGHT};
    return {ownTextColour, COLOR_WINDOW};
}

bool showsFocus(const DRAWITEMSTRUCT& item) {
    return (item.itemState & ODS_FOCUS) && !(item.itemState & ODS_NOFOCUSRECT);
}

} // namespace

void ListControl::onAttached() {
    raiseItemHeights();
    refill();
}

/// The platform chooses the item height before the dialog sets its font.
void ListControl::raiseItemHeights() {
    constexpr auto chosenItem = static_cast<WPARAM>(-1); // shown while the list is closed
    constexpr WPARAM listedItems = 0;
    const LONG needed = TextExtent(handle()).of("X").cy + 2 * verticalMargin;
    for (const WPARAM item : {chosenItem, listedItems})
        if (send(CB_GETITEMHEIGHT, item) < needed)
            send(CB_SETITEMHEIGHT, item, needed);
}

void ListControl::refill() {
    send(CB_RESETCONTENT);
    const TextExtent extent(handle());
    LONG widest = 0;
    for (int item = 0; item < source_.count(); ++item) {
        const std::string text = source_.text(item);
        widest = std::max(widest, extent.of(text).cx);
        const LRESULT position =
            send(CB_INSERTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
        send(CB_SETITEMDATA, static_cast<WPARAM>(position), source_.value(item));
    }
    widenDroppedList(widest);
}

void ListControl::widenDroppedList(int textWidth) {
    RECT place{};
    GetWindowRect(handle(), &place);
    const int maxWidth = 3 * (place.right - place.left);
    const int needed = textWidth + 2 * textIndent + GetSystemMetrics(SM_CXVSCROLL);
    // The platform keeps the list at least as wide as the control.
    send(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::min(needed, maxWidth)));
}

int ListControl::count() const {
    return static_cast<int>(send(CB_GETCOUNT));
}

int ListControl::selected() const {
    return static_cast<int>(send(CB_GETCURSEL));
}

void ListControl::select(int item) {
    if (selected() != item)
        send(CB_SETCURSEL, static_cast<WPARAM>(item));
}

void ListControl::selectFirst(const std::function<bool(int item)>& isWanted) {
    int item = 0;
    const int items = count();
    while (item < items && !isWanted(item))
        ++item;
    select(item < items ? item : noItem);
}

bool ListControl::onDrawItem(const DRAWITEMSTRUCT& item) {
    const int position = static_cast<int>(item.itemID);
    const bool isItem = position >= 0 && position < source_.count();
    const ItemColours colours = coloursOf(item, isItem ? source_.textColour(position) : COLOR_WINDOWTEXT);
    const std::string text = isItem ? source_.text(position) : std::string();

    TEXTMETRICA metrics{};
    GetTextMetricsA(item.hDC, &metrics);
    const RECT& place = item.rcItem;
    const int top = (place.top + place.bottom - metrics.tmHeight) / 2;
    const COLORREF oldText = SetTextColor(item.hDC, GetSysColor(colours.text));
    const COLORREF oldBackground = SetBkColor(item.hDC, GetSysColor(colours.background));
    ExtTextOutA(item.hDC, place.left + textIndent, top, ETO_OPAQUE | ETO_CLIPPED, &place, text.c_str(),
                static_cast<UINT>(text.size()), nullptr);
    if (showsFocus(item))
        DrawFocusRect(item.hDC, &place);
    SetTextColor(item.hDC, oldText);
    SetBkColor(item.hDC, oldBackground);
    return true;
}

std::int32_t ListBox::value() const {
    return static_cast<std::int32_t>(send(CB_GETITEMDATA, static_cast<WPARAM>(selected())));
}

void ListBox::setValue(const std::int32_t& value) {
    selectFirst([&](int item) {
        return source().equal(static_cast<std::int32_t>(send(CB_GETITEMDATA, static_cast<WPARAM>(item))),
                              value);
    });
}

std::string TextListBox::value() const {
    return selected() == noItem ? std::string() : source().text(selected());
}

void TextListBox::setValue(const std::string& value) {
    selectFirst([&](int item) { return source().text(item) == value; });
}

} // namespace framework
