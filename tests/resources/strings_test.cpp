#include "resources/ids.h"
#include "scheduler/ui/framework/resourcetext.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <map>
#include <string>

namespace {

using Texts = std::map<UINT, std::string>;

TEST(Strings, EachCommandWithADescriptionHasExactlyThatOne) {
    Texts found;
    for (UINT id = 0; id <= 0xFFFF; ++id) {
        std::array<char, 256> text{};
        const int length =
            LoadStringA(GetModuleHandleA(nullptr), id, text.data(), static_cast<int>(text.size()));
        if (length > 0) {
            found.emplace(id, std::string(text.data(), static_cast<std::size_t>(length)));
        }
    }
    EXPECT_EQ(found, (Texts{
                         {138, "Sets your preferences for how the Scheduler will function"},
                         {143, "Adds a new project to the schedule"},
                         {144, "Edits the schedule for the selected project"},
                         {145, "Deletes the selected project from the schedule"},
                         {146, "Runs this project now, instead of on schedule"},
                         {2007, "Suspends further scheduled programs"},
                         {2010, "Tests the schedule"},
                         {2019, "Enables this project so that it will run on schedule"},
                         {2020, "Disables this project"},
                         {2021, "Opens this project with Corvane"},
                     }));
}

TEST(Strings, TheDescriptionOfACommandIsFetchedByTheCommandsNumber) {
    const std::map<UINT, std::string> descriptions = {
        {IDM_PREFERENCES, "Sets your preferences for how the Scheduler will function"},
        {IDM_ADD, "Adds a new project to the schedule"},
        {IDM_EDIT, "Edits the schedule for the selected project"},
        {IDM_DELETE, "Deletes the selected project from the schedule"},
        {IDM_RUN, "Runs this project now, instead of on schedule"},
        {IDM_SUSPEND, "Suspends further scheduled programs"},
        {IDM_TEST, "Tests the schedule"},
        {IDM_ENABLE, "Enables this project so that it will run on schedule"},
        {IDS_DISABLE, "Disables this project"},
        {IDM_OPEN, "Opens this project with Corvane"},
    };
    for (const auto& [command, text] : descriptions)
        EXPECT_EQ(framework::resourceText(command), text);
    for (const UINT command :
         {UINT{IDM_ABOUT}, UINT{IDM_EXIT}, UINT{IDM_HELP}, UINT{IDM_DISPLAY}, UINT{IDM_CLOSE}})
        EXPECT_EQ(framework::resourceText(command), "") << "needs no description";
}

TEST(Strings, NamesStandForTheNumbersOfTheCommands) {
    EXPECT_EQ(IDM_PREFERENCES, 138);
    EXPECT_EQ(IDM_ADD, 143);
    EXPECT_EQ(IDM_EDIT, 144);
    EXPECT_EQ(IDM_DELETE, 145);
    EXPECT_EQ(IDM_RUN, 146);
    EXPECT_EQ(IDM_SUSPEND, 2007);
    EXPECT_EQ(IDM_TEST, 2010);
    EXPECT_EQ(IDM_ABOUT, 2011);
    EXPECT_EQ(IDM_EXIT, 2012);
    EXPECT_EQ(IDM_HELP, 2017);
    EXPECT_EQ(IDM_DISPLAY, 2018);
    EXPECT_EQ(IDM_ENABLE, 2019);
    EXPECT_EQ(IDS_DISABLE, 2020);
    EXPECT_EQ(IDM_OPEN, 2021);
    EXPECT_EQ(IDM_CLOSE, 2022);
}

} // namespace
