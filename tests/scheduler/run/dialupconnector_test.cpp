#include "scheduler/run/dialupconnector.h"
#include "tests/support/temporaryfolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <span>

namespace {

using scheduler::DialupConnector;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrCaseEq;

using Names = std::vector<std::string>;

struct SimulatedService {
    Names phoneBook;
    std::size_t spareRecords = 1; ///< records required in addition to one per entry
    int failingCall = 0;          ///< number of the call that fails; 0 for none
    DWORD reportedBeyond = 0;     ///< entries reported beyond those that fit the buffer
    int calls = 0;

    DWORD operator()(const char* reserved, const char* path, RASENTRYNAMEA* records, DWORD* size,
                     DWORD* count) {
        ++calls;
        EXPECT_EQ(reserved, nullptr);
        EXPECT_EQ(path, nullptr) << "must use the default phone book";
        EXPECT_EQ(*size, static_cast<DWORD>(calls) * 532) << "must add one record per call";
        EXPECT_TRUE(isPrepared(records[calls - 1]));
        if (calls == failingCall)
            return ERROR_NOT_ENOUGH_MEMORY;
        *count = static_cast<DWORD>(phoneBook.size());
        const std::size_t room = *size / 532;
        if (room < phoneBook.size() + spareRecords) {
            *size = static_cast<DWORD>((phoneBook.size() + spareRecords) * 532);
            return 603;
        }
        for (std::size_t index = 0; index < phoneBook.size(); ++index)
            phoneBook[index].copy(records[index].szEntryName, RAS_MaxEntryName);
        if (reportedBeyond)
            *count = static_cast<DWORD>(room) + reportedBeyond;
        return ERROR_SUCCESS;
    }

    static bool isPrepared(const RASENTRYNAMEA& record) {
        const auto rest = std::as_bytes(std::span(&record, 1)).subspan(sizeof(record.dwSize));
        return record.dwSize == 532 &&
               std::ranges::all_of(rest, [](std::byte byte) { return byte == std::byte{}; });
    }
};

TEST(DialupConnector, ListsThePhoneBookAddingARecordUntilTheBufferFits) {
    const std::string longest(RAS_MaxEntryName, 'n');
    const struct {
        Names phoneBook;
        std::size_t spareRecords;
        int calls;
    } rows[] = {
        {{"office", "Home", "abroad"}, 1, 4},
        {{"office", "Home"}, 0, 2},
        {{longest}, 1, 2},
        {{}, 1, 1},
    };
    for (const auto& row : rows) {
        SimulatedService service{row.phoneBook, row.spareRecords};
        Names names{"earlier"};
        EXPECT_TRUE(scheduler::listEntries(std::ref(service), names));
        EXPECT_EQ(service.calls, row.calls);
        Names expected = row.phoneBook;
        expected.insert(expected.begin(), "earlier");
        EXPECT_EQ(names, expected);
    }
}

TEST(DialupConnector, FailureOrOverreportLeavesTheNamesReadSoFar) {
    for (int call = 1; call <= 4; ++call) {
        SimulatedService service{{"office", "Home", "abroad"}, 1, call};
        Names names;
        EXPECT_FALSE(scheduler::listEntries(std::ref(service), names));
        EXPECT_EQ(service.calls, call) << "must not retry";
        EXPECT_EQ(names, Names(static_cast<std::size_t>(call)));
    }
    SimulatedService service{{"office", "Home"}, 1, 0, 1};
    Names names;
    EXPECT_FALSE(scheduler::listEntries(std::ref(service), names));
    EXPECT_EQ(service.calls, 3);
    EXPECT_THAT(names, ElementsAre("office", "Home", ""));
}

DWORD WINAPI enumerateOneEntry(LPCSTR, LPCSTR, LPRASENTRYNAMEA records, LPDWORD, LPDWORD count) {
    lstrcpyA(records[0].szEntryName, "office");
    *count = 1;
    return ERROR_SUCCESS;
}

TEST(DialupConnector, IsAvailableOnlyWithAllSevenEntryPoints) {
    const Names entryPoints{"RasEnumEntriesA", "RasEnumConnectionsA", "RasGetConnectStatusA",  "RasHangUpA",
                            "RasDialA",        "RasGetErrorStringA",  "RasGetEntryDialParamsA"};
    for (std::size_t missing = 0; missing <= entryPoints.size(); ++missing) {
        Names requested;
        const DialupConnector connector(GetModuleHandleA(nullptr), [&](HMODULE library, const char* name) {
            EXPECT_EQ(library, GetModuleHandleA(nullptr));
            requested.emplace_back(name);
            return requested.size() == missing + 1 ? nullptr : std::bit_cast<FARPROC>(&enumerateOneEntry);
        });
        const bool available = missing == entryPoints.size();
        EXPECT_EQ(connector.available(), available) << missing;
        EXPECT_EQ(connector.entries(), available ? Names{"office"} : Names{});
        EXPECT_EQ(requested, Names(entryPoints.begin(),
                                   entryPoints.begin() + static_cast<int>(missing) + (available ? 0 : 1)));
    }
}

TEST(DialupConnector, IsNotAvailableWithoutTheLibrary) {
    const DialupConnector connector(nullptr, [](HMODULE, const char* name) -> FARPROC {
        ADD_FAILURE() << "looked for " << name << " without a library";
        return nullptr;
    });
    EXPECT_FALSE(connector.available());
    EXPECT_THAT(connector.entries(), IsEmpty());
}

TEST(DialupConnector, LoadsOnlyTheSystemsLibrary) {
    char system[MAX_PATH]{};
    GetSystemDirectoryA(system, sizeof system);
    const std::string systemFolder = system + std::string("\\");
    // A wrong library in a folder that is searched before the system folder.
    const test::TemporaryFolder folder;
    ASSERT_TRUE(CopyFileA((systemFolder + "version.dll").c_str(), folder.file("rasapi32.dll").c_str(), TRUE));
    SetDllDirectoryA(folder.path().c_str());
    EXPECT_EQ(GetModuleHandleA("RASAPI32"), nullptr) << "the library must be loaded only when it is needed";
    const DialupConnector& connector = DialupConnector::instance();
    SetDllDirectoryA(nullptr);

    char path[MAX_PATH]{};
    ASSERT_NE(GetModuleFileNameA(GetModuleHandleA("RASAPI32"), path, sizeof path), 0U)
        << "the library must stay loaded";
    EXPECT_THAT(path, StrCaseEq(systemFolder + "rasapi32.dll"));
    EXPECT_TRUE(connector.available());
    EXPECT_EQ(&connector, &DialupConnector::instance());
}

} // namespace
