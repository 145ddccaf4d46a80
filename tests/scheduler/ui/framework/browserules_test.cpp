#include "scheduler/ui/framework/browselayout.h"
#include "scheduler/ui/framework/chosenfiles.h"

#include <gtest/gtest.h>

namespace {

using framework::chosenFiles;
using framework::chosenFilesText;
using framework::dialogFilter;
using namespace std::string_literals;
using Files = std::vector<std::string>;

TEST(BrowseRules, TheButtonIsAtTheRightAndTheEditTakesTheRest) {
    const struct {
        RECT place;
        int textWidth;
        RECT edit;
        RECT button;
    } cases[] = {
        {{10, 20, 310, 50}, 50, {10, 20, 246, 50}, {250, 20, 310, 50}},
        {{10, 20, 310, 43}, 50, {10, 20, 246, 43}, {250, 20, 310, 43}}, // just high enough
        {{10, 20, 310, 41}, 50, {10, 20, 246, 41}, {250, 19, 310, 42}}, // two pixels short
        {{0, 10, 200, 29}, 9, {0, 10, 177, 29}, {181, 8, 200, 31}},     // four pixels short
        {{0, 10, 200, 30}, 9, {0, 10, 177, 30}, {181, 9, 200, 32}}};    // three short: one above, two below
    for (const auto& row : cases) {
        const framework::BrowseLayout layout = framework::layOutBrowseEdit(row.place, row.textWidth);
        EXPECT_TRUE(EqualRect(&layout.edit, &row.edit)) << &row - cases;
        EXPECT_TRUE(EqualRect(&layout.button, &row.button)) << &row - cases;
    }
}

TEST(BrowseRules, AFilterGetsZerosForSeparatorsAndTwoAtItsEnd) {
    EXPECT_EQ(dialogFilter("Projects (.kra)|*.kra|All Files (*.*)|*.*||"),
              "Projects (.kra)\0*.kra\0All Files (*.*)\0*.*\0\0\0\0"s);
    EXPECT_EQ(dialogFilter("All|*.*"), "All\0*.*\0\0"s);
    EXPECT_EQ(dialogFilter(""), "\0\0"s);
}

TEST(BrowseRules, ChosenFilesAreTakenFromTheDialogsAnswer) {
    const struct {
        std::string answer;
        Files files;
    } cases[] = {
        {"", {}},
        {"\0\0\0"s, {}},
        {"C:\\a b.kra\0\0garbage"s, {"C:\\a b.kra"}},
        {"C:\\a.kra", {"C:\\a.kra"}},
        {"C:\\dir\0one.kra\0two b.kra\0three.kra\0\0left from before\0"s,
         {"C:\\dir\\one.kra", "two b.kra", "three.kra"}},
        {"C:\\dir\0one.kra\0two"s, {"C:\\dir\\one.kra", "two"}}, // a full buffer, not terminated
        {"C:\\\0one.kra\0two.kra\0\0"s, {"C:\\one.kra", "two.kra"}},
        {"\\\\host\\share\0one.kra\0two.kra\0\0"s, {"\\\\host\\share\\one.kra", "two.kra"}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(chosenFiles(row.answer), row.files) << row.answer;
}

TEST(BrowseRules, OneChosenFileIsShownAsItsPathAndSeveralInQuotes) {
    EXPECT_EQ(chosenFilesText({}), "");
    EXPECT_EQ(chosenFilesText({"C:\\a b.kra"}), "C:\\a b.kra");
    EXPECT_EQ(chosenFilesText({"C:\\dir\\one.kra", "two b.kra"}),
              "\"C:\\dir\\one.kra\" \"C:\\dir\\two b.kra\"");
    EXPECT_EQ(chosenFilesText({"C:\\one.kra", "two.kra", "three.kra"}),
              "\"C:\\one.kra\" \"C:\\two.kra\" \"C:\\three.kra\"");
}

} // namespace
