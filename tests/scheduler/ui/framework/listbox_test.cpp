#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/listbox.h"
#include "scheduler/ui/framework/textextent.h"
#include "tests/scheduler/ui/framework/drawnitem.h"
#include "tests/scheduler/ui/framework/testdialogs.h"
#include "tests/support/systemcolours.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using framework::ItemList;

class ListDialog : public framework::Dialog {
public:
    explicit ListDialog(const framework::ListSource& source)
        : Dialog(IDD_CONTROLS), list(*this, IDC_LIST, source) {}
    framework::ListBox list;
};

class TextListDialog : public framework::Dialog {
public:
    explicit TextListDialog(const framework::ListSource& source)
        : Dialog(IDD_CONTROLS), list(*this, IDC_LIST, source) {}
    framework::TextListBox list;
};

ItemList threeItems() {
    return ItemList({{"none of them", 10, true}, {"a long text, to be drawn", 30}, {"other", 20}});
}

TEST(ListSource, AnItemStandsForItsPlaceUnlessItSaysOtherwise) {
    class Plain : public framework::ListSource {
        int count() const override { return 2; }
        std::string text(int) const override { return "x"; }
    };
    const Plain plain;
    const framework::ListSource& source = plain;
    EXPECT_EQ(source.value(1), 1);
    EXPECT_EQ(source.textColour(1), COLOR_WINDOWTEXT);
    EXPECT_TRUE(source.equal(1, 1));
    EXPECT_FALSE(source.equal(1, 2));
}

TEST(ListSource, GrayItemsHaveTheSystemsGrayText) {
    const ItemList items = threeItems();
    EXPECT_EQ(items.textColour(0), COLOR_GRAYTEXT);
    EXPECT_EQ(items.textColour(1), COLOR_WINDOWTEXT);
}

class ListBox : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dialog.open(nullptr)); }
    HWND handle() const { return dialog.list.handle(); }

    ItemList items = threeItems();
    ListDialog dialog{items};
};

TEST_F(ListBox, HoldsEachTextBesideItsValue) {
    ASSERT_EQ(dialog.list.count(), 3);
    std::array<char, 64> text{};
    SendMessageA(handle(), CB_GETLBTEXT, 1, reinterpret_cast<LPARAM>(text.data()));
    EXPECT_STREQ(text.data(), "a long text, to be drawn");
    EXPECT_EQ(SendMessageA(handle(), CB_GETITEMDATA, 0, 0), 10);
    EXPECT_EQ(SendMessageA(handle(), CB_GETITEMDATA, 1, 0), 30);
    EXPECT_EQ(SendMessageA(handle(), CB_GETITEMDATA, 2, 0), 20);
}

/// Does to the list what a platform does whose own font is smaller than the dialog's.
class LowItems : public framework::Control {
public:
    explicit LowItems(framework::ControlHost& host) : Control(host, IDC_LIST_LABEL) {}

protected:
    void onAttached() override {
        for (const WPARAM item : {WPARAM{0}, static_cast<WPARAM>(-1)})
            SendDlgItemMessageA(GetParent(handle()), IDC_LIST, CB_SETITEMHEIGHT, item, 4);
    }
};

TEST(ListBoxItems, AreAsHighAsTheFontAsksFor) {
    class LowListDialog : public framework::Dialog {
    public:
        explicit LowListDialog(const framework::ListSource& source)
            : Dialog(IDD_CONTROLS), low(*this), list(*this, IDC_LIST, source) {}
        LowItems low;
        framework::ListBox list;
    };
    const ItemList items = threeItems();
    LowListDialog dialog(items);
    ASSERT_TRUE(dialog.open(nullptr));
    const HWND list = dialog.list.handle();
    const LONG needed = framework::TextExtent(list).of("Xg").cy;
    for (const WPARAM item : {WPARAM{0}, static_cast<WPARAM>(-1)})
        EXPECT_GE(SendMessageA(list, CB_GETITEMHEIGHT, item, 0), needed);
}

TEST_F(ListBox, TheDroppedListIsWideEnoughForItsTexts) {
    const auto droppedWidth = [&] { return SendMessageA(handle(), CB_GETDROPPEDWIDTH, 0, 0); };
    const LRESULT own = droppedWidth();
    RECT place{};
    GetWindowRect(handle(), &place);
    EXPECT_EQ(own, place.right - place.left) << "short texts leave it as it is";
    items.add({std::string(40, 'm'), 40});
    dialog.list.refill();
    const LRESULT wide = droppedWidth();
    EXPECT_GT(wide, own);
    items.add({std::string(4000, 'm'), 50});
    dialog.list.refill();
    EXPECT_EQ(droppedWidth(), 3 * own) << "but it stays on the screen";
}

TEST_F(ListBox, SelectsTheItemOfItsValue) {
    std::int32_t field = 20;
    dialog.list.bind(framework::bindNumber(field));
    dialog.load();
    EXPECT_EQ(dialog.list.selected(), 2);
    dialog.list.select(1);
    EXPECT_EQ(dialog.list.value(), 30);
    dialog.store();
    EXPECT_EQ(field, 30);
}

TEST_F(ListBox, AValueThatNoItemStandsForSelectsNothingAndStaysInItsField) {
    std::int32_t field = 20;
    dialog.list.bind(framework::bindNumber(field));
    dialog.load();
    field = 4711;
    dialog.load();
    EXPECT_EQ(dialog.list.selected(), framework::ListBox::noItem);
    dialog.store();
    EXPECT_EQ(field, 4711);
}

TEST_F(ListBox, TheSourceDecidesWhichValuesAreEqual) {
    class Tens : public ItemList {
    public:
        using ItemList::ItemList;
        bool equal(std::int32_t value, std::int32_t wanted) const override {
            return value / 10 == wanted / 10;
        }
    };
    const Tens tens({{"ten", 10}, {"twenty", 20}});
    ListDialog other(tens);
    ASSERT_TRUE(other.open(nullptr));
    other.list.setValue(27);
    EXPECT_EQ(other.list.selected(), 1);
}

TEST_F(ListBox, IsFilledAnew) {
    dialog.list.select(1);
    items.add({"fourth", 40});
    dialog.list.refill();
    EXPECT_EQ(dialog.list.count(), 4);
    EXPECT_EQ(dialog.list.selected(), framework::ListBox::noItem);
}

TEST(TextListBox, SelectsTheItemOfItsTextAndStoresIt) {
    const ItemList items = threeItems();
    TextListDialog dialog(items);
    ASSERT_TRUE(dialog.open(nullptr));
    std::string field = "other";
    dialog.list.bind(framework::bindText(field));
    dialog.load();
    EXPECT_EQ(dialog.list.selected(), 2);
    dialog.list.select(1);
    dialog.store();
    EXPECT_EQ(field, "a long text, to be drawn");
    field = "gone";
    dialog.load();
    EXPECT_EQ(dialog.list.selected(), framework::ListBox::noItem);
    EXPECT_EQ(dialog.list.value(), "");
    dialog.store();
    EXPECT_EQ(field, "gone");
}

/// With system colours that all differ.
class DrawnListBox : public ListBox {
protected:
    void expect(int item, UINT state, COLORREF text, COLORREF background) {
        drawn.draw(handle(), item, state);
        EXPECT_EQ(drawn.background(), background);
        EXPECT_TRUE(drawn.has(text));
        for (const COLORREF other : {RGB(255, 0, 0), RGB(0, 255, 0), RGB(255, 255, 0)})
            EXPECT_EQ(drawn.has(other), other == text);
    }

    const test::SystemColours colours{
        {COLOR_WINDOW, RGB(0, 0, 200)},          {COLOR_WINDOWTEXT, RGB(255, 0, 0)},
        {COLOR_GRAYTEXT, RGB(0, 255, 0)},        {COLOR_HIGHLIGHT, RGB(90, 0, 90)},
        {COLOR_HIGHLIGHTTEXT, RGB(255, 255, 0)}, {COLOR_BTNFACE, RGB(0, 90, 90)}};
    test::DrawnItem drawn;
};

TEST_F(DrawnListBox, ItemsAreDrawnInTheSystemsColours) {
    expect(1, 0, RGB(255, 0, 0), RGB(0, 0, 200));
    expect(1, ODS_SELECTED, RGB(255, 255, 0), RGB(90, 0, 90));
    expect(1, ODS_DISABLED, RGB(0, 255, 0), RGB(0, 90, 90));
    expect(1, ODS_DISABLED | ODS_SELECTED, RGB(0, 255, 0), RGB(0, 90, 90));
}

TEST_F(DrawnListBox, AGrayItemIsGrayUnlessItIsSelected) {
    expect(0, 0, RGB(0, 255, 0), RGB(0, 0, 200));
    expect(0, ODS_SELECTED, RGB(255, 255, 0), RGB(90, 0, 90));
}

TEST_F(DrawnListBox, NoItemIsAnEmptyPlace) {
    drawn.draw(handle(), -1, 0);
    EXPECT_EQ(drawn.background(), RGB(0, 0, 200));
    EXPECT_FALSE(drawn.has(RGB(255, 0, 0)));
}

TEST_F(DrawnListBox, TheFocusHasARectangleUnlessItIsNotShown) {
    drawn.draw(handle(), 1, ODS_FOCUS);
    EXPECT_TRUE(drawn.hasFocusRectangle());
    drawn.draw(handle(), 1, ODS_FOCUS | ODS_NOFOCUSRECT);
    EXPECT_FALSE(drawn.hasFocusRectangle());
    drawn.draw(handle(), 1, 0);
    EXPECT_FALSE(drawn.hasFocusRectangle());
}

TEST_F(ListBox, ItsItemsAreHighEnoughForItsFont) {
    const HDC context = GetDC(handle());
    const HGDIOBJ old =
        SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageA(handle(), WM_GETFONT, 0, 0)));
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    SelectObject(context, old);
    ReleaseDC(handle(), context);
    EXPECT_GE(SendMessageA(handle(), CB_GETITEMHEIGHT, 0, 0), metrics.tmHeight);
}

} // namespace
