#include "scheduler/ui/framework/propertysheet.h"
#include "tests/scheduler/ui/framework/testdialogs.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace {

using test::placeOf;

/// Of the pages below, in dialog units.
constexpr RECT pageUnits{0, 0, 240, 120};

SIZE sizeOf(const RECT& place) {
    return {place.right - place.left, place.bottom - place.top};
}

bool isInside(const RECT& inner, const RECT& outer) {
    RECT common{};
    return IntersectRect(&common, &inner, &outer) && EqualRect(&common, &inner);
}

/// A sheet of one page, looked at once it is shown, and then cancelled.
class SheetOf : public framework::PropertySheetDialog {
public:
    explicit SheetOf(int templateId) : page(templateId) { add(page); }

    void lookAt(std::function<void(const SheetOf& sheet)> look) {
        look_ = std::move(look);
        EXPECT_EQ(run("The Sheet", nullptr), IDCANCEL);
        EXPECT_FALSE(look_) << "it was never shown";
    }

    HWND tabs() const { return reinterpret_cast<HWND>(SendMessageA(handle(), PSM_GETTABCONTROL, 0, 0)); }
    HWND button(int id) const { return GetDlgItem(handle(), id); }
    RECT clientPlace() const {
        RECT client{};
        GetClientRect(handle(), &client);
        MapWindowPoints(handle(), nullptr, reinterpret_cast<POINT*>(&client), 2);
        return client;
    }

    framework::PropertyPage page;
    LONG widthWhenShown = 0; ///< of the page, when the sheet was about to appear

protected:
    void onAttached() override { PostMessageA(handle(), shown, 0, 0); }
    framework::Handled onMessage(const framework::Message& message) override {
        if (message.id != shown) {
            const framework::Handled handled = PropertySheetDialog::onMessage(message);
            if (message.id == WM_SHOWWINDOW && message.wParam)
                widthWhenShown = sizeOf(placeOf(page.handle())).cx;
            return handled;
        }
        look_(*this);
        look_ = nullptr;
        SendMessageA(button(IDCANCEL), BM_CLICK, 0, 0);
        return 0;
    }

private:
    static constexpr UINT shown = WM_APP + 1;

    std::function<void(const SheetOf& sheet)> look_;
};

void expectAllInPlace(const SheetOf& sheet) {
    const RECT page = placeOf(sheet.page.handle());
    const RECT tabs = placeOf(sheet.tabs());
    const RECT client = sheet.clientPlace();
    EXPECT_TRUE(isInside(page, tabs));
    EXPECT_TRUE(isInside(tabs, client));
    for (const int id : {IDOK, IDCANCEL}) {
        const RECT button = placeOf(sheet.button(id));
        EXPECT_TRUE(isInside(button, client)) << id;
        EXPECT_GE(button.top, tabs.bottom) << id;
    }
    EXPECT_EQ(sizeOf(page).cy, sheet.page.ownSize().cy);
}

class SheetFit : public testing::TestWithParam<int> {};

TEST_P(SheetFit, ThePageHasTheRoomThatItsFontAsksFor) {
    SheetOf(GetParam()).lookAt([](const SheetOf& sheet) {
        RECT wanted = pageUnits;
        MapDialogRect(sheet.page.handle(), &wanted);
        EXPECT_EQ(sheet.page.ownSize().cx, wanted.right);
        EXPECT_EQ(sizeOf(placeOf(sheet.page.handle())).cx, wanted.right);
        EXPECT_EQ(sheet.widthWhenShown, wanted.right);
        expectAllInPlace(sheet);
    });
}

INSTANTIATE_TEST_SUITE_P(Fonts, SheetFit, testing::Values(IDD_LARGE_PAGE, IDD_SMALL_PAGE));

TEST(SheetFit, ItStaysWideEnoughForItsButtons) {
    SheetOf(IDD_FIRST_PAGE).lookAt([](const SheetOf& sheet) {
        EXPECT_GE(sizeOf(placeOf(sheet.page.handle())).cx, sheet.page.ownSize().cx);
        expectAllInPlace(sheet);
    });
}

TEST(SheetFit, APageThatIsTurnedToHasItsRoomWhateverSizeTheSheetGivesIt) {
    SheetOf sheet(IDD_LARGE_PAGE);
    framework::PropertyPage second(IDD_SECOND_PAGE);
    sheet.add(second);
    sheet.lookAt([&](const SheetOf& shown) {
        const RECT room = placeOf(shown.page.handle());
        // What a sheet may do that made room for its pages before it was fitted.
        const auto cut = [&] {
            SetWindowPos(second.handle(), HWND_TOP, 0, 0, sizeOf(room).cx / 2, sizeOf(room).cy / 2,
                         SWP_NOMOVE);
        };
        cut();
        SendMessageA(shown.handle(), PSM_SETCURSEL, 1, 0);
        cut();
        EXPECT_TRUE(IsWindowVisible(second.handle()));
        const RECT place = placeOf(second.handle());
        EXPECT_TRUE(EqualRect(&place, &room)) << place.right - place.left << "x" << place.bottom - place.top;
    });
}

} // namespace
