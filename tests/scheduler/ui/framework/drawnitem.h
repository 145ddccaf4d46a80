#pragma once

#include "scheduler/ui/framework/gdihandles.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace test {

class Canvas {
public:
    Canvas(int width, int height) : width_(width), height_(height) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void** const bits = reinterpret_cast<void**>(&pixels_);
        bitmap_.reset(CreateDIBSection(context_.get(), &info, DIB_RGB_COLORS, bits, nullptr, 0));
        old_ = SelectObject(context_.get(), bitmap_.get());
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() { SelectObject(context_.get(), old_); }

    HDC context() const { return context_.get(); }
    COLORREF at(int x, int y) const {
        GdiFlush();
        const DWORD pixel = pixels_[y * width_ + x];
        return RGB((pixel >> 16) & 0xFF, (pixel >> 8) & 0xFF, pixel & 0xFF);
    }
    bool has(COLORREF colour) const {
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x)
                if (at(x, y) == colour)
                    return true;
        return false;
    }

private:
    int width_;
    int height_;
    framework::MemoryContext context_{CreateCompatibleDC(nullptr)};
    framework::Bitmap bitmap_;
    HGDIOBJ old_ = nullptr;
    DWORD* pixels_ = nullptr;
};

/// Canvas on which a list draws one of its owner-drawn items.
class DrawnItem : public Canvas {
public:
    DrawnItem() : Canvas(200, 20) {}

    void draw(HWND list, int item, UINT state) {
        DRAWITEMSTRUCT request{};
        request.CtlType = ODT_COMBOBOX;
        request.CtlID = static_cast<UINT>(GetDlgCtrlID(list));
        request.itemID = static_cast<UINT>(item);
        request.itemAction = ODA_DRAWENTIRE;
        request.itemState = state;
        request.hwndItem = list;
        request.hDC = context();
        request.rcItem = {0, 0, 200, 20};
        const auto address = reinterpret_cast<LPARAM>(&request);
        EXPECT_EQ(SendMessageA(GetParent(list), WM_DRAWITEM, request.CtlID, address), TRUE);
    }

    COLORREF background() const { return at(197, 10); }

    bool hasFocusRectangle() const { return at(10, 0) != at(11, 0); }
};

} // namespace test
