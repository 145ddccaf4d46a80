#include "lib/base/registry.h"
#include "lib/base/threads.h"
#include "scheduler/run/worker.h"
#include "tests/scheduler/run/simulatedprocesses.h"
#include "tests/support/allocations.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/timeout.h"

#include <windows.h>

#include <process.h>

#include <gmock/gmock.h>

#include <atomic>
#include <new>
#include <numeric>
#include <vector>

namespace {

std::atomic<int> workers = 0;            ///< running threads
void (*workerFunction)(void*) = nullptr; ///< their thread function
SRWLOCK workersMayBegin = SRWLOCK_INIT;  ///< held exclusively to delay the workers
bool threadsStart = true;
std::atomic<int> limitedWaits = 0;
std::atomic<int> unlimitedWaits = 0;
std::atomic<int> postsRefused = 0; ///< remaining refusals

void countedWorker(void* argument) {
    AcquireSRWLockShared(&workersMayBegin);
    ReleaseSRWLockShared(&workersMayBegin);
    workerFunction(argument);
    --workers;
}

std::uintptr_t countedThread(void (*start)(void*), unsigned stackSize, void* argument) {
    static const auto original =
        test::platformFunction<decltype(&_beginthread)>("msvcrt.dll", "_beginthread");
    if (!threadsStart)
        return base::threadFailed;
    ++workers;
    workerFunction = start;
    return original(countedWorker, stackSize, argument);
}

} // namespace

SCHEDULER_STAND_IN("user32.dll", PostMessageA, "_PostMessageA@16");
SCHEDULER_STAND_IN("kernel32.dll", WaitForSingleObject, "_WaitForSingleObject@8");
SCHEDULER_REPLACE_IMPORT(_beginthread, "__beginthread", countedThread);

namespace scheduler {
namespace {

using test::processes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

void waitForWorkers() {
    for (const ULONGLONG last = GetTickCount64() + test::timeout; workers > 0 && GetTickCount64() < last;)
        Sleep(1);
    ASSERT_EQ(workers, 0);
}

struct Posted {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;

    friend bool operator==(const Posted&, const Posted&) = default;
};

class MessageWindow {
public:
    ~MessageWindow() { DestroyWindow(handle); }

    /// Messages since the last call.
    std::vector<Posted> posted() const {
        std::vector<Posted> messages;
        for (MSG message{}; PeekMessageA(&message, handle, 0, 0, PM_REMOVE);)
            messages.push_back({message.message, message.wParam, message.lParam});
        return messages;
    }

    /// Run numbers of the WM_RUN_FINISHED messages since the last call. Fails on other messages.
    std::vector<WPARAM> ends() const {
        std::vector<WPARAM> numbers;
        for (const Posted& message : posted()) {
            EXPECT_EQ(message, (Posted{0x0401, message.wParam, 0}));
            numbers.push_back(message.wParam);
        }
        return numbers;
    }

    const HWND handle = CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
};

class Worker : public testing::Test {
protected:
    Worker() {
        launcher.reportTo(window.handle);
        processes.starts.clear();
        processes.canStart = true;
        ResetEvent(processes.over.get());
    }

    bool launch(std::int32_t runNumber, const std::string& path = "run:\"C:\\My Spider\\spider.exe\" /s1") {
        ScheduledProject entry;
        entry.path = path;
        entry.runNumber = runNumber;
        return launcher.launch(entry);
    }
    static void endProcesses() {
        SetEvent(processes.over.get());
        waitForWorkers();
    }

    const MessageWindow window;
    WorkerLauncher launcher;
};

TEST_F(Worker, ProcessStartsMinimisedInItsProgramsFolder) {
    SetEvent(processes.over.get());
    base::writeString(HKEY_CLASSES_ROOT, ".kra\\", "Corvane.Test");
    base::writeString(HKEY_CLASSES_ROOT, "Corvane.Test\\shell\\open\\command\\", "C:\\Spider\\s.exe");
    for (const char* path : {"D:\\a b.kra", "run:\"C:\\My Spider\\spider.exe\" x", "run:notepad"}) {
        ASSERT_TRUE(launch(7, path));
        waitForWorkers();
    }
    EXPECT_THAT(processes.starts,
                ElementsAre(test::ProcessStart{"\"C:\\Spider\\s.exe\" /s7 /r /e \"D:\\a b.kra\"",
                                               "C:\\Spider\\", 7, TRUE},
                            test::ProcessStart{"\"C:\\My Spider\\spider.exe\" x", "C:\\My Spider\\", 7, TRUE},
                            test::ProcessStart{"notepad", "", 7, TRUE}));
}

TEST_F(Worker, EndIsPostedAfterAnUnlimitedWait) {
    platform::WaitForSingleObject.onCall = [](HANDLE, DWORD milliseconds) {
        ++(milliseconds == INFINITE ? unlimitedWaits : limitedWaits);
    };
    ASSERT_TRUE(launch(7));
    EXPECT_EQ(workers, 1);
    EXPECT_THAT(window.ends(), IsEmpty());
    endProcesses();
    EXPECT_THAT(window.ends(), ElementsAre(7));
    platform::WaitForSingleObject.onCall = nullptr;
    EXPECT_EQ(limitedWaits, 0);
    EXPECT_GT(unlimitedWaits, 0);
}

TEST_F(Worker, EndIsPostedAgainUntilTheQueueAcceptsIt) {
    SetEvent(processes.over.get());
    postsRefused = 2;
    platform::PostMessageA.answer = FALSE;
    platform::PostMessageA.onCall = [](auto...) {
        if (--postsRefused < 0)
            platform::PostMessageA.answer.reset();
    };
    ASSERT_TRUE(launch(5));
    waitForWorkers();
    EXPECT_THAT(window.ends(), ElementsAre(5));

    processes.canStart = false;
    postsRefused = 2;
    platform::PostMessageA.answer = FALSE;
    ASSERT_TRUE(launch(6));
    waitForWorkers();
    platform::PostMessageA.onCall = nullptr;
    EXPECT_THAT(window.posted(),
                ElementsAre(Posted{WM_RUN_NOT_STARTED, 6, ERROR_FILE_NOT_FOUND}, Posted{0x0401, 6, 0}));
}

TEST_F(Worker, FailedStartPostsTheReasonAndThenTheEnd) {
    processes.canStart = false;
    ASSERT_TRUE(launch(3));
    waitForWorkers();
    EXPECT_THAT(window.posted(),
                ElementsAre(Posted{WM_RUN_NOT_STARTED, 3, ERROR_FILE_NOT_FOUND}, Posted{0x0401, 3, 0}));

    AcquireSRWLockExclusive(&workersMayBegin);
    ASSERT_TRUE(launch(4));
    {
        const test::RefusedAllocations refused;
        ReleaseSRWLockExclusive(&workersMayBegin);
        waitForWorkers();
    }
    EXPECT_EQ(processes.starts.size(), 1U) << "without memory, must not start";
    EXPECT_THAT(window.posted(),
                ElementsAre(Posted{WM_RUN_NOT_STARTED, 4, ERROR_NOT_ENOUGH_MEMORY}, Posted{0x0401, 4, 0}));
}

TEST_F(Worker, EndIsPostedToTheWindowOfTheLaunch) {
    const MessageWindow later;
    ASSERT_TRUE(launch(1));
    launcher.reportTo(later.handle);
    endProcesses();
    EXPECT_THAT(window.ends(), ElementsAre(1));
    EXPECT_THAT(later.ends(), IsEmpty());
}

TEST_F(Worker, EndsWhenItsWindowIsGone) {
    {
        const MessageWindow gone;
        launcher.reportTo(gone.handle);
        ASSERT_TRUE(launch(1));
    }
    endProcesses();
}

TEST_F(Worker, WithoutMemoryNothingIsLaunched) {
    ScheduledProject entry;
    entry.path = "run:\"C:\\Spider\\spider.exe\" /s1"; // long enough to need an allocation
    {
        const test::RefusedAllocations refused;
        EXPECT_THROW(static_cast<void>(launcher.launch(entry)), std::bad_alloc);
    }
    EXPECT_EQ(workers, 0);
}

TEST_F(Worker, LeaksNoMemoryWhetherThreadsStartOrNot) {
    SetEvent(processes.over.get());
    const auto run = [this] {
        EXPECT_EQ(launch(1), threadsStart);
        waitForWorkers();
        EXPECT_EQ(window.ends().size(), threadsStart);
        processes.starts.clear();
    };
    for (const bool start : {true, false}) {
        threadsStart = start;
        run();
        const std::size_t before = test::heldBlocks();
        for (int i = 0; i < 10; ++i)
            run();
        EXPECT_EQ(test::heldBlocks(), before);
    }
    threadsStart = true;
}

TEST_F(Worker, TwentyParallelRunsEachEndOnce) {
    std::vector<WPARAM> numbers(20);
    std::iota(numbers.begin(), numbers.end(), WPARAM{1});
    for (const WPARAM number : numbers)
        ASSERT_TRUE(launch(static_cast<std::int32_t>(number)));
    EXPECT_EQ(workers, 20);
    endProcesses();
    EXPECT_THAT(window.ends(), UnorderedElementsAreArray(numbers));
}

} // namespace
} // namespace scheduler
