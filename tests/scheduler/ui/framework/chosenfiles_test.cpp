#include "scheduler/ui/framework/chosenfiles.h"

#include <gtest/gtest.h>

namespace {

using framework::chosenFiles;
using framework::chosenFilesText;
using framework::dialogFilter;
using namespace std::string_literals;
using Files = std::vector<std::string>;

TEST(DialogFilter, HasZerosForItsSeparatorsAndTwoAtItsEnd) {
    EXPECT_EQ(dialogFilter("Projects (.kra)|*.kra|All Files (*.*)|*.*||"),
              "Projects (.kra)\0*.kra\0All Files (*.*)\0*.*\0\0\0\0"s);
    EXPECT_EQ(dialogFilter("All|*.*"), "All\0*.*\0\0"s);
    EXPECT_EQ(dialogFilter(""), "\0\0"s);
}

TEST(ChosenFiles, AreTakenFromTheDialogsAnswer) {
    struct Case {
        std::string answer;
        Files files;
    };
    const Case cases[] = {
        {"", {}},
        {"\0\0\0"s, {}},
        {"C:\\a b.kra\0\0garbage"s, {"C:\\a b.kra"}},
        {"C:\\a.kra", {"C:\\a.kra"}},
        {"C:\\dir\0one.kra\0two b.kra\0three.kra\0\0left from before\0"s,
         {"C:\\dir\\one.kra", "two b.kra", "three.kra"}},
        {"C:\\\0one.kra\0two.kra\0\0"s, {"C:\\one.kra", "two.kra"}},
        {"\\\\host\\share\0one.kra\0two.kra\0\0"s, {"\\\\host\\share\\one.kra", "two.kra"}},
    };
    for (const Case& row : cases)
        EXPECT_EQ(chosenFiles(row.answer), row.files) << row.answer;
}

TEST(ChosenFiles, AFullBufferWithoutItsEndIsReadToItsLastCharacter) {
    EXPECT_EQ(chosenFiles("C:\\dir\0one.kra\0two"s), (Files{"C:\\dir\\one.kra", "two"}));
}

TEST(ChosenFilesText, OneIsItsPathAndSeveralAreQuoted) {
    EXPECT_EQ(chosenFilesText({}), "");
    EXPECT_EQ(chosenFilesText({"C:\\a b.kra"}), "C:\\a b.kra");
    EXPECT_EQ(chosenFilesText({"C:\\dir\\one.kra", "two b.kra"}),
              "\"C:\\dir\\one.kra\" \"C:\\dir\\two b.kra\"");
    EXPECT_EQ(chosenFilesText({"C:\\one.kra", "two.kra", "three.kra"}),
              "\"C:\\one.kra\" \"C:\\two.kra\" \"C:\\three.kra\"");
}

} // namespace
