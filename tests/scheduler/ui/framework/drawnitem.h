// One item of an owner-drawn list, drawn for a test to look at.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

namespace test {

/// What an item looks like: drawn by a real message into a bitmap, of which the colours are counted.
class DrawnItem {
public:
    static constexpr int width = 200;
    static constexpr int height = 20;

    DrawnItem() {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap_ =
            CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&pixels_), nullptr, 0);
        old_ = SelectObject(context_, bitmap_);
    }
    DrawnItem(const DrawnItem&) = delete;
    DrawnItem& operator=(const DrawnItem&) = delete;
    ~DrawnItem() {
        SelectObject(context_, old_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }

    void draw(HWND list, int item, UINT state) {
        DRAWITEMSTRUCT request{};
        request.CtlType = ODT_COMBOBOX;
        request.CtlID = static_cast<UINT>(GetDlgCtrlID(list));
        request.itemID = static_cast<UINT>(item);
        request.itemAction = ODA_DRAWENTIRE;
        request.itemState = state;
        request.hwndItem = list;
        request.hDC = context_;
        request.rcItem = {0, 0, width, height};
        EXPECT_EQ(
            SendMessageA(GetParent(list), WM_DRAWITEM, request.CtlID, reinterpret_cast<LPARAM>(&request)),
            TRUE);
        GdiFlush();
    }

    COLORREF background() const { return at(width - 3, height / 2); }

    bool has(COLORREF colour) const {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                if (at(x, y) == colour)
                    return true;
        return false;
    }

    /// Whether the item's edge is dotted.
    bool hasFocusRectangle() const { return at(10, 0) != at(11, 0); }

private:
    COLORREF at(int x, int y) const {
        const DWORD pixel = pixels_[y * width + x];
        return RGB((pixel >> 16) & 0xFF, (pixel >> 8) & 0xFF, pixel & 0xFF);
    }

    HDC context_ = CreateCompatibleDC(nullptr);
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ old_ = nullptr;
    DWORD* pixels_ = nullptr;
};

} // namespace test
