#include "scheduler/ui/framework/browselayout.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Case {
    RECT place;
    int textWidth;
    RECT edit;
    RECT button;
};

void expectPlace(const RECT& actual, const RECT& expected, const char* what) {
    EXPECT_TRUE(EqualRect(&actual, &expected))
        << what << ' ' << actual.left << ' ' << actual.top << ' ' << actual.right << ' ' << actual.bottom;
}

TEST(BrowseLayout, TheButtonStandsAtTheRightAndTheEditTakesTheRest) {
    const Case cases[] = {
        {{10, 20, 310, 50}, 50, {10, 20, 246, 50}, {250, 20, 310, 50}},
        {{10, 20, 310, 43}, 50, {10, 20, 246, 43}, {250, 20, 310, 43}}, // just high enough
        {{10, 20, 310, 41}, 50, {10, 20, 246, 41}, {250, 19, 310, 42}}, // two pixels short
        {{0, 10, 200, 29}, 9, {0, 10, 177, 29}, {181, 8, 200, 31}},     // four pixels short
        {{0, 10, 200, 30}, 9, {0, 10, 177, 30}, {181, 9, 200, 32}},     // three: the odd one is below
    };
    for (const Case& row : cases) {
        const framework::BrowseLayout layout = framework::layOutBrowseEdit(row.place, row.textWidth);
        expectPlace(layout.edit, row.edit, "edit");
        expectPlace(layout.button, row.button, "button");
    }
}

} // namespace
