#include "lib/base/base.h"
#include "scheduler/ui/projectpage.h"
#include "tests/scheduler/ui/framework/drawnitem.h"
#include "tests/scheduler/ui/pagehost.h"
#include "tests/scheduler/ui/platformcalls.h"
#include "tests/support/filledentry.h"
#include "tests/support/temporaryfolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>

namespace {

using scheduler::RunCommand;
using scheduler::ScheduledProject;
using testing::ElementsAre;
using testing::IsEmpty;

class ProjectPage : public testing::Test {
protected:
    void open() {
        page_ = std::make_unique<scheduler::ProjectPage>(record_, phoneBook_);
        host_ = std::make_unique<test::PageHost>(*page_);
        ASSERT_NE(page_->handle(), nullptr);
    }

    bool connectionIsEnabled() const {
        const bool enabled = host_->isEnabled(IDC_AUTOCONNECT);
        for (const int id : {IDC_AUTOCONNECT_LABEL, IDC_TIME_LIMIT, IDC_TIME_LIMIT_LABEL, IDC_DISCONNECT})
            EXPECT_EQ(host_->isEnabled(id), enabled) << id;
        return enabled;
    }

    ScheduledProject record_;
    std::vector<std::string> phoneBook_ = {"Home", "Office line"};
    std::unique_ptr<test::PageHost> host_; // destroyed after its page
    std::unique_ptr<scheduler::ProjectPage> page_;
};

TEST_F(ProjectPage, ShowsTheRecordAndStoresItUnchanged) {
    record_ = test::filledEntry();
    open();
    EXPECT_EQ(host_->text(IDC_PROJECT_PATH), "C:\\Sites\\news.kra");
    EXPECT_EQ(host_->selected(IDC_RUN_COMMAND), 3);
    EXPECT_EQ(host_->selected(IDC_AUTOCONNECT), 2);
    EXPECT_EQ(host_->text(IDC_TIME_LIMIT), "90");
    EXPECT_TRUE(host_->isChecked(IDC_DISCONNECT));
    page_->store();
    EXPECT_EQ(record_, test::filledEntry());
}

TEST_F(ProjectPage, StoresChanges) {
    open();
    host_->setText(IDC_PROJECT_PATH, "run:backup.exe");
    host_->type(IDC_TIME_LIMIT, "45");
    host_->click(IDC_DISCONNECT);
    page_->store();
    EXPECT_EQ(record_.path, "run:backup.exe");
    EXPECT_EQ(record_.timeLimitMinutes, 45);
    EXPECT_EQ(record_.disconnectWhenDone, 1);
}

TEST_F(ProjectPage, OffersTheRunCommandsInTheOrderOfTheirValues) {
    open();
    EXPECT_THAT(host_->items(IDC_RUN_COMMAND),
                ElementsAre("Run normally", "Run update only", "Relink files", "Run complete refresh"));
    for (int command = 0; command < 4; ++command) {
        host_->choose(IDC_RUN_COMMAND, command);
        page_->store();
        EXPECT_EQ(static_cast<int>(record_.runCommand), command);
    }
}

TEST_F(ProjectPage, OffersAnyConnectionInGrayThenThePhoneBookInItsOrder) {
    open();
    EXPECT_THAT(host_->items(IDC_AUTOCONNECT), ElementsAre("(any open connection)", "Home", "Office line"));
    for (const int item : {0, 1, 2}) {
        test::DrawnItem drawn;
        drawn.draw(host_->item(IDC_AUTOCONNECT), item, 0);
        EXPECT_EQ(drawn.has(GetSysColor(COLOR_GRAYTEXT)), item == 0) << item;
        EXPECT_EQ(drawn.has(GetSysColor(COLOR_WINDOWTEXT)), item != 0) << item;
    }
    phoneBook_.clear();
    open();
    EXPECT_THAT(host_->items(IDC_AUTOCONNECT), ElementsAre("(any open connection)"));
}

TEST_F(ProjectPage, AConnectionIsStoredByNameAndAnyConnectionAsEmpty) {
    record_.dialupEntry = "Home";
    open();
    host_->choose(IDC_AUTOCONNECT, 2);
    page_->store();
    EXPECT_EQ(record_.dialupEntry, "Office line");
    host_->choose(IDC_AUTOCONNECT, 0);
    page_->store();
    EXPECT_EQ(record_.dialupEntry, "");
    for (const std::vector<std::string>& phoneBook : {phoneBook_, {""}}) {
        phoneBook_ = phoneBook;
        open();
        EXPECT_EQ(host_->selected(IDC_AUTOCONNECT), 0)
            << "empty means any connection, even if the phone book has an empty name";
    }
}

TEST_F(ProjectPage, KeepsValuesThatItDoesNotOffer) {
    record_.dialupEntry = "Old line";
    record_.runCommand = static_cast<RunCommand>(9);
    open();
    EXPECT_EQ(host_->selected(IDC_AUTOCONNECT), -1);
    EXPECT_EQ(host_->selected(IDC_RUN_COMMAND), -1);
    EXPECT_TRUE(connectionIsEnabled());
    page_->store();
    EXPECT_EQ(record_.dialupEntry, "Old line");
    EXPECT_EQ(record_.runCommand, static_cast<RunCommand>(9));
}

TEST_F(ProjectPage, RelinkingDisablesTheConnectionAndKeepsItsValues) {
    record_ = test::filledEntry();
    open();
    for (const int command : {0, 1, 3, 2}) {
        host_->choose(IDC_RUN_COMMAND, command);
        EXPECT_EQ(connectionIsEnabled(), command != 2) << command;
    }
    page_->store();
    ScheduledProject wanted = test::filledEntry();
    wanted.runCommand = RunCommand::RelinkFiles;
    EXPECT_EQ(record_, wanted);
    open();
    EXPECT_FALSE(connectionIsEnabled()) << "when the page opens";
}

TEST_F(ProjectPage, TheTimeLimitIsAtMost9999Minutes) {
    open();
    for (const auto& [text, shown] : {std::pair{"9999", "9999"}, {"10000", "9999"}, {"", "0"}}) {
        host_->setText(IDC_TIME_LIMIT, text);
        test::pumpUntilIdle();
        EXPECT_EQ(host_->text(IDC_TIME_LIMIT), shown);
    }
}

TEST_F(ProjectPage, AcceptsOnlyExistingFilesCommandLinesAndQuotedFiles) {
    const test::TemporaryFolder folder;
    const std::string file = folder.file("news.kra");
    std::ofstream(file) << "";
    open();
    for (const auto& [text, isGood] : {std::pair{file, true},
                                       {"run:", true},
                                       {"run:nothing.exe /a", true},
                                       {"\"C:\\one.kra\" \"C:\\two.kra\"", true},
                                       {"", false},
                                       {"C:\\missing.kra", false},
                                       {"Run:backup.exe", false},
                                       {" run:backup.exe", false},
                                       {"a\"b\"", false},
                                       {folder.path(), false},
                                       {"C:\\", false}}) {
        const test::MessageBoxes boxes;
        host_->setText(IDC_PROJECT_PATH, text);
        EXPECT_EQ(page_->check(), isGood) << text;
        ASSERT_EQ(boxes.shown.size(), isGood ? 0U : 1U) << text;
        if (isGood)
            continue;
        EXPECT_EQ(boxes.shown[0].text, "You must enter the path to an existing Corvane project file.");
        EXPECT_EQ(boxes.shown[0].caption, base::applicationName);
        EXPECT_EQ(boxes.shown[0].owner, page_->handle());
    }
}

} // namespace
