#include "lib/base/base.h"
#include "resources/ids.h"
#include "scheduler/ui/projectpage.h"
#include "tests/scheduler/ui/pagehost.h"
#include "tests/scheduler/ui/simulatedmessagebox.h"
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
    std::unique_ptr<test::PageHost> host_; // dies after its page
    std::unique_ptr<scheduler::ProjectPage> page_;
};

TEST_F(ProjectPage, ShowsTheRecord) {
    record_ = test::filledEntry();
    open();
    EXPECT_EQ(host_->text(IDC_PROJECT_PATH), "C:\\Sites\\news.kra");
    EXPECT_EQ(host_->selected(IDC_RUN_COMMAND), 3);
    EXPECT_EQ(host_->selected(IDC_AUTOCONNECT), 2);
    EXPECT_EQ(host_->text(IDC_TIME_LIMIT), "90");
    EXPECT_TRUE(host_->isChecked(IDC_DISCONNECT));
}

TEST_F(ProjectPage, OffersTheRunCommandsInTheOrderOfTheirValues) {
    open();
    EXPECT_THAT(host_->itemTexts(IDC_RUN_COMMAND),
                ElementsAre("Run normally", "Run update only", "Relink files", "Run complete refresh"));
    for (int command = 0; command < 4; ++command) {
        host_->choose(IDC_RUN_COMMAND, command);
        page_->store();
        EXPECT_EQ(static_cast<int>(record_.runCommand), command);
    }
}

TEST_F(ProjectPage, OffersAnyConnectionAndThenThePhoneBookInItsOrder) {
    open();
    EXPECT_THAT(host_->itemTexts(IDC_AUTOCONNECT),
                ElementsAre("(any open connection)", "Home", "Office line"));
    EXPECT_EQ(host_->selected(IDC_AUTOCONNECT), 0) << "a new record names no entry";
}

TEST_F(ProjectPage, WithoutPhoneBookThereIsAnyConnectionAlone) {
    phoneBook_.clear();
    open();
    EXPECT_THAT(host_->itemTexts(IDC_AUTOCONNECT), ElementsAre("(any open connection)"));
}

TEST_F(ProjectPage, AnEntryIsStoredByItsNameAndAnyConnectionAsNone) {
    record_.dialupEntry = "Home";
    open();
    host_->choose(IDC_AUTOCONNECT, 2);
    page_->store();
    EXPECT_EQ(record_.dialupEntry, "Office line");
    host_->choose(IDC_AUTOCONNECT, 0);
    page_->store();
    EXPECT_EQ(record_.dialupEntry, "");
}

TEST_F(ProjectPage, AnEntryThatIsNoLongerInThePhoneBookIsKept) {
    record_.dialupEntry = "Old line";
    open();
    EXPECT_EQ(host_->selected(IDC_AUTOCONNECT), -1);
    page_->store();
    EXPECT_EQ(record_.dialupEntry, "Old line");
}

TEST_F(ProjectPage, NoEntryIsAnyConnectionEvenBesideANamelessOne) {
    phoneBook_ = {""};
    open();
    EXPECT_EQ(host_->selected(IDC_AUTOCONNECT), 0);
}

TEST_F(ProjectPage, ARunCommandThatNobodyKnowsIsKept) {
    record_.runCommand = static_cast<RunCommand>(9);
    open();
    EXPECT_EQ(host_->selected(IDC_RUN_COMMAND), -1);
    EXPECT_TRUE(connectionIsEnabled());
    page_->store();
    EXPECT_EQ(record_.runCommand, static_cast<RunCommand>(9));
}

TEST_F(ProjectPage, RelinkingDisablesWhatIsAboutTheConnection) {
    open();
    EXPECT_TRUE(connectionIsEnabled());
    host_->choose(IDC_RUN_COMMAND, 2);
    EXPECT_FALSE(connectionIsEnabled());
    for (const int other : {0, 1, 3}) {
        host_->choose(IDC_RUN_COMMAND, other);
        EXPECT_TRUE(connectionIsEnabled()) << other;
    }
    record_.runCommand = RunCommand::RelinkFiles;
    open();
    EXPECT_FALSE(connectionIsEnabled()) << "from the start";
}

TEST_F(ProjectPage, RelinkingLeavesTheValuesAsTheyWere) {
    record_ = test::filledEntry();
    open();
    host_->choose(IDC_RUN_COMMAND, 2);
    page_->store();
    ScheduledProject wanted = test::filledEntry();
    wanted.runCommand = RunCommand::RelinkFiles;
    EXPECT_EQ(record_, wanted);
}

TEST_F(ProjectPage, UntouchedItStoresWhatItLoaded) {
    record_ = test::filledEntry();
    open();
    page_->store();
    EXPECT_EQ(record_, test::filledEntry());
}

TEST_F(ProjectPage, StoresWhatWasChanged) {
    open();
    host_->setText(IDC_PROJECT_PATH, "run:backup.exe");
    host_->type(IDC_TIME_LIMIT, "45");
    host_->click(IDC_DISCONNECT);
    page_->store();
    EXPECT_EQ(record_.path, "run:backup.exe");
    EXPECT_EQ(record_.timeLimitMinutes, 45);
    EXPECT_EQ(record_.disconnectWhenDone, 1);
}

TEST_F(ProjectPage, TheTimeLimitGoesUpToFourNines) {
    open();
    for (const auto& [keys, shown] :
         {std::pair{"9999", "9999"}, {"9998", "9998"}, {"12345", "1234"}, {"\b", "0"}, {"1", "1"}}) {
        host_->type(IDC_TIME_LIMIT, keys);
        EXPECT_EQ(host_->text(IDC_TIME_LIMIT), shown) << keys;
    }
    host_->setText(IDC_TIME_LIMIT, "10000");
    test::pumpUntilIdle();
    EXPECT_EQ(host_->text(IDC_TIME_LIMIT), "9999");
}

TEST_F(ProjectPage, TakesFilesThatExistCommandLinesAndQuotedFiles) {
    const test::TemporaryFolder folder;
    const std::string file = folder.file("news.kra");
    std::ofstream(file) << "";
    open();
    for (const std::string& good : {file, std::string("run:"), std::string("run:nothing.exe /a"),
                                    std::string("\"C:\\one.kra\" \"C:\\two.kra\"")}) {
        host_->setText(IDC_PROJECT_PATH, good);
        EXPECT_TRUE(page_->check()) << good;
    }
    EXPECT_THAT(test::shownMessages, IsEmpty());
}

TEST_F(ProjectPage, RefusesAnyOtherTextWithAMessage) {
    const test::TemporaryFolder folder;
    open();
    for (const std::string& bad :
         {std::string(), std::string("C:\\missing.kra"), std::string("Run:backup.exe"),
          std::string(" run:backup.exe"), std::string("a\"b\""), folder.path(), std::string("C:\\")}) {
        test::shownMessages.clear();
        host_->setText(IDC_PROJECT_PATH, bad);
        EXPECT_FALSE(page_->check()) << bad;
        ASSERT_EQ(test::shownMessages.size(), 1U);
        EXPECT_EQ(test::shownMessages[0].text,
                  "You must enter the path to an existing Corvane project file.");
        EXPECT_EQ(test::shownMessages[0].caption, base::applicationName);
        EXPECT_EQ(test::shownMessages[0].owner, page_->handle());
    }
}

} // namespace
