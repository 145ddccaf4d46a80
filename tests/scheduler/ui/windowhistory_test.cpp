#include "lib/base/opsys.h"
#include "tests/scheduler/ui/mainwindowtest.h"
#include "tests/support/filecontent.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <cstring>
#include <sstream>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class WindowHistory : public test::MainWindowTest {
protected:
    WindowHistory() { deleteHistory(); }

    /// The lines since the last call, from the project's name on.
    std::vector<std::string> newLines() {
        std::vector<std::string> lines;
        std::istringstream content(test::fileContent(path_));
        for (std::string line; std::getline(content, line);)
            lines.push_back(line.substr(line.find('\t', 2 * std::size("2026-11-22 08:00:00")) + 1));
        if (!lines.empty())
            lines.erase(lines.begin()); // the header
        deleteHistory();
        return lines;
    }
    void deleteHistory() const { DeleteFileA(path_.c_str()); }

private:
    const std::string path_ =
        std::getenv("LOCALAPPDATA") + std::string("\\Brindlewood\\Corvane Scheduler\\history.txt");
};

TEST_F(WindowHistory, RecordsTheStartSuspendResumeAndExitOfTheProgram) {
    start();
    EXPECT_THAT(newLines(), ElementsAre("Corvane Scheduler\t\tstarted\t" + base::executablePath() + "\r"));
    command(IDM_SUSPEND);
    EXPECT_THAT(newLines(), ElementsAre("Corvane Scheduler\t\tsuspended\t\r"));
    mainWindow.reset();
    EXPECT_THAT(newLines(), ElementsAre("Corvane Scheduler\t\texited\t\r"));
    start();
    EXPECT_THAT(newLines(), ElementsAre(HasSubstr("started"), HasSubstr("suspended")));
    command(IDM_SUSPEND);
    EXPECT_THAT(newLines(), ElementsAre("Corvane Scheduler\t\tresumed\t\r"));
}

TEST_F(WindowHistory, RecordsNoExitWithoutAStart) {
    mainWindow = std::make_unique<scheduler::MainWindow>();
    mainWindow.reset();
    EXPECT_THAT(newLines(), IsEmpty());
}

TEST_F(WindowHistory, RecordsAnUnreadableScheduleButNotAMissingOne) {
    const std::string path = scheduler::schedulePath();
    ASSERT_TRUE(test::writeFile(path, "damaged"));
    start();
    EXPECT_THAT(newLines(), ElementsAre(HasSubstr("started"),
                                        "Corvane Scheduler\t\tschedule could not be read\t" + path + "\r"));
    DeleteFileA(path.c_str());
    start();
    EXPECT_THAT(newLines(), ElementsAre(HasSubstr("exited"), HasSubstr("started")));
}

TEST_F(WindowHistory, RecordsConsecutiveFailedSavesOnce) {
    start();
    newLines();
    const test::Override<test::GetWindowsDirectoryACall> missing([](LPSTR buffer, UINT) {
        std::strcpy(buffer, "C:\\missing");
        return UINT{10};
    });
    const test::Override<test::PostQuitMessageCall> quitting([](int) {});
    for (int save = 0; save < 2; ++save)
        send(WM_ENDSESSION, TRUE);
    std::vector<std::string> lines = newLines();
    std::erase_if(lines, [](const std::string& line) { return line.find("log-off") != std::string::npos; });
    EXPECT_THAT(lines, ElementsAre(AllOf(StartsWith("Corvane Scheduler\t\tschedule could not be saved: "),
                                         Not(HasSubstr(": \t")), EndsWith("\tC:\\missing\\schedule.dat\r"))));
}

TEST_F(WindowHistory, RecordsRunsAndWhyOneCouldNotStart) {
    save({entry("run:first"), entry("run:second")});
    start();
    newLines();
    test::startThread = [] { return true; };
    tick();
    send(scheduler::WM_RUN_FINISHED, 1);
    EXPECT_THAT(newLines(), ElementsAre("run:first\tschedule\tok\trun:first\r"));
    select(1);
    command(IDM_RUN);
    send(scheduler::WM_RUN_NOT_STARTED, 1, ERROR_ACCESS_DENIED);
    EXPECT_THAT(newLines(), IsEmpty());
    send(scheduler::WM_RUN_FINISHED, 1);
    EXPECT_THAT(newLines(),
                ElementsAre(AllOf(StartsWith("run:second\tby hand\tcould not be started: Access "),
                                  HasSubstr("denied"), EndsWith("\trun:second\r"))));
    EXPECT_EQ(cell(1, scheduler::ScheduleColumn::LastResult), "");
}

TEST_F(WindowHistory, RecordsTheEndOfTheSession) {
    start();
    newLines();
    const test::Override<test::PostQuitMessageCall> quitting([](int) {});
    send(WM_ENDSESSION, FALSE);
    EXPECT_THAT(newLines(), IsEmpty());
    send(WM_ENDSESSION, TRUE);
    EXPECT_THAT(newLines(), ElementsAre("Corvane Scheduler\t\tlog-off or shutdown\t\r"));
}

} // namespace
