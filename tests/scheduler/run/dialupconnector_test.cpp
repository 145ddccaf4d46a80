#include "scheduler/run/dialupconnector.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/temporaryfolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

constexpr DWORD tooSmall = 603;

/// A service whose phone book has these entries. It watches how it is called.
class SimulatedService {
public:
    explicit SimulatedService(Names phoneBook) : phoneBook_(std::move(phoneBook)) {}

    std::size_t spareRecords = 1; ///< how many records beyond its entries it wants room for
    int failingCall = 0;          ///< the call that ends with an error; 0 for none
    DWORD reportedBeyond = 0;     ///< how many entries more than the buffer has room for it reports
    int calls = 0;

    DWORD operator()(const char* reserved, const char* path, RASENTRYNAMEA* records, DWORD* size,
                     DWORD* count) {
        ++calls;
        EXPECT_EQ(reserved, nullptr);
        EXPECT_EQ(path, nullptr) << "the default phone book";
        EXPECT_EQ(*size, static_cast<DWORD>(calls) * 532) << "one record more with each call";
        EXPECT_TRUE(isPrepared(records[calls - 1]));
        if (calls == failingCall)
            return ERROR_NOT_ENOUGH_MEMORY;
        *count = static_cast<DWORD>(phoneBook_.size());
        const std::size_t room = *size / 532;
        if (room < phoneBook_.size() + spareRecords) {
            *size = static_cast<DWORD>((phoneBook_.size() + spareRecords) * 532);
            return tooSmall;
        }
        for (std::size_t index = 0; index < phoneBook_.size(); ++index)
            phoneBook_[index].copy(records[index].szEntryName, RAS_MaxEntryName);
        if (reportedBeyond)
            *count = static_cast<DWORD>(room) + reportedBeyond;
        return ERROR_SUCCESS;
    }

private:
    static bool isPrepared(const RASENTRYNAMEA& record) {
        const auto rest = std::as_bytes(std::span(&record, 1)).subspan(sizeof(record.dwSize));
        return record.dwSize == 532 &&
               std::ranges::all_of(rest, [](std::byte byte) { return byte == std::byte{}; });
    }

    Names phoneBook_;
};

TEST(PhoneBook, OneWithThreeEntriesTakesFourCallsAndGivesThemInTheServicesOrder) {
    SimulatedService service({"office", "Home", "abroad"});
    Names names;
    EXPECT_TRUE(scheduler::listEntries(std::ref(service), names));
    EXPECT_EQ(service.calls, 4) << "the first three have no room for what the service wants";
    EXPECT_THAT(names, ElementsAre("office", "Home", "abroad"));
}

TEST(PhoneBook, OneWithoutEntriesTakesOneCall) {
    SimulatedService service({});
    Names names;
    EXPECT_TRUE(scheduler::listEntries(std::ref(service), names));
    EXPECT_EQ(service.calls, 1);
    EXPECT_THAT(names, IsEmpty());
}

TEST(PhoneBook, ABufferThatJustFitsWillDo) {
    SimulatedService service({"office", "Home"});
    service.spareRecords = 0;
    Names names;
    EXPECT_TRUE(scheduler::listEntries(std::ref(service), names));
    EXPECT_EQ(service.calls, 2);
    EXPECT_THAT(names, ElementsAre("office", "Home"));
}

TEST(PhoneBook, TheLongestNameIsReadWhole) {
    const std::string longest(RAS_MaxEntryName, 'n');
    SimulatedService service({longest});
    Names names;
    EXPECT_TRUE(scheduler::listEntries(std::ref(service), names));
    EXPECT_THAT(names, ElementsAre(longest));
}

TEST(PhoneBook, AFailureAfterAnyNumberOfCallsLeavesAsManyEmptyNames) {
    for (int call = 1; call <= 4; ++call) {
        SimulatedService service({"office", "Home", "abroad"});
        service.failingCall = call;
        Names names;
        EXPECT_FALSE(scheduler::listEntries(std::ref(service), names));
        EXPECT_EQ(service.calls, call) << "no other try";
        EXPECT_EQ(names, Names(static_cast<std::size_t>(call)));
    }
}

TEST(PhoneBook, AServiceThatReportsMoreThanFitsHasFailedAndEveryRecordIsListed) {
    SimulatedService service({"office", "Home"});
    service.reportedBeyond = 1;
    Names names;
    EXPECT_FALSE(scheduler::listEntries(std::ref(service), names));
    EXPECT_EQ(service.calls, 3);
    EXPECT_THAT(names, ElementsAre("office", "Home", ""));
}

TEST(PhoneBook, WhatIsListedAlreadyStays) {
    SimulatedService service({"office"});
    Names names{"earlier"};
    EXPECT_TRUE(scheduler::listEntries(std::ref(service), names));
    EXPECT_THAT(names, ElementsAre("earlier", "office"));
}

DWORD WINAPI enumerateOneEntry(LPCSTR, LPCSTR, LPRASENTRYNAMEA records, LPDWORD, LPDWORD count) {
    lstrcpyA(records[0].szEntryName, "office");
    *count = 1;
    return ERROR_SUCCESS;
}

/// What a connector asks a library for that lacks one of its entry points, and what it makes of it.
struct Lookup {
    Names asked;
    bool available = false;
    Names entries;
};

Lookup lookUpWithout(const std::string& missing) {
    Lookup lookup;
    const DialupConnector connector(GetModuleHandleA(nullptr), [&](HMODULE library, const char* name) {
        EXPECT_EQ(library, GetModuleHandleA(nullptr));
        lookup.asked.emplace_back(name);
        return missing == name ? nullptr : std::bit_cast<FARPROC>(&enumerateOneEntry);
    });
    lookup.available = connector.available();
    lookup.entries = connector.entries();
    return lookup;
}

const Names entryPoints{"RasEnumEntriesA", "RasEnumConnectionsA", "RasGetConnectStatusA",  "RasHangUpA",
                        "RasDialA",        "RasGetErrorStringA",  "RasGetEntryDialParamsA"};

TEST(DialupConnector, IsAvailableWithAllSevenEntryPointsAndHasListedTheEntries) {
    const Lookup lookup = lookUpWithout("");
    EXPECT_EQ(lookup.asked, entryPoints);
    EXPECT_TRUE(lookup.available);
    EXPECT_THAT(lookup.entries, ElementsAre("office"));
}

TEST(DialupConnector, TheFirstMissingEntryPointEndsTheLookupAndNothingIsListed) {
    for (std::size_t index = 0; index < entryPoints.size(); ++index) {
        const Lookup lookup = lookUpWithout(entryPoints[index]);
        EXPECT_EQ(lookup.asked,
                  Names(entryPoints.begin(), entryPoints.begin() + static_cast<int>(index) + 1));
        EXPECT_FALSE(lookup.available) << entryPoints[index];
        EXPECT_THAT(lookup.entries, IsEmpty());
    }
}

TEST(DialupConnector, ASystemWithoutTheLibraryHasNoServiceAndNoEntries) {
    const DialupConnector connector(nullptr, [](HMODULE, const char* name) -> FARPROC {
        ADD_FAILURE() << "looks for " << name << " in no library";
        return nullptr;
    });
    EXPECT_FALSE(connector.available());
    EXPECT_THAT(connector.entries(), IsEmpty());
}

TEST(DialupConnector, TheProgramsOneUsesTheSystemsLibraryAndNoOtherOfThatName) {
    char system[MAX_PATH]{};
    GetSystemDirectoryA(system, sizeof system);
    const std::string systemFolder = system + std::string("\\");
    // A library that lies where others are looked for first.
    const test::TemporaryFolder folder;
    ASSERT_TRUE(CopyFileA((systemFolder + "version.dll").c_str(), folder.file("rasapi32.dll").c_str(), TRUE));
    SetDllDirectoryA(folder.path().c_str());
    const DialupConnector& connector = DialupConnector::instance();
    SetDllDirectoryA(nullptr);

    char path[MAX_PATH]{};
    ASSERT_NE(GetModuleFileNameA(GetModuleHandleA("RASAPI32"), path, sizeof path), 0U) << "it stays loaded";
    EXPECT_THAT(path, StrCaseEq(systemFolder + "rasapi32.dll"));
    EXPECT_TRUE(connector.available());
    EXPECT_EQ(&connector, &DialupConnector::instance());
}

TEST(DialupConnector, TheServicesOwnPhoneBookIsListed) {
    const auto enumerate =
        test::platformFunction<decltype(&RasEnumEntriesA)>("rasapi32.dll", "RasEnumEntriesA");
    ASSERT_NE(enumerate, nullptr);
    Names listed;
    scheduler::listEntries(enumerate, listed);
    EXPECT_EQ(DialupConnector::instance().entries(), listed);
}

} // namespace
