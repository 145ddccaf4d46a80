// The platform refuses one call after another of those by which the registry, the instance's mutex and the
// component library are reached: the answer is a failure, the caller's data is untouched, and no handle is
// lost.

#include "lib/base/opsys.h"
#include "lib/base/registry.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/registrykey.h"
#include "tests/support/startedprocess.h"

#include <windows.h>

#include <objbase.h>
#include <shlwapi.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

bool openFails = false;
bool createFails = false;
bool setFails = false;
bool deleteFails = false;
int queriesBeforeFailure = -1; ///< none fails
bool mutexFails = false;
std::optional<DWORD> deletionsAnswer; ///< of a whole key, in place of the platform's

constexpr LSTATUS refusal = ERROR_NO_SYSTEM_RESOURCES;

template<class Function>
Function original(const char* name) {
    return test::platformFunction<Function>("advapi32.dll", name);
}

LSTATUS WINAPI open(HKEY root, LPCSTR subkey, DWORD options, REGSAM access, PHKEY key) {
    static const auto platform = original<decltype(&RegOpenKeyExA)>("RegOpenKeyExA");
    return openFails ? refusal : platform(root, subkey, options, access, key);
}

LSTATUS WINAPI create(HKEY root, LPCSTR subkey, DWORD reserved, LPSTR keyClass, DWORD options, REGSAM access,
                      const LPSECURITY_ATTRIBUTES security, PHKEY key, LPDWORD disposition) {
    static const auto platform = original<decltype(&RegCreateKeyExA)>("RegCreateKeyExA");
    return createFails
               ? refusal
               : platform(root, subkey, reserved, keyClass, options, access, security, key, disposition);
}

LSTATUS WINAPI set(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    static const auto platform = original<decltype(&RegSetValueExA)>("RegSetValueExA");
    return setFails ? refusal : platform(key, name, reserved, type, data, size);
}

LSTATUS WINAPI query(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    static const auto platform = original<decltype(&RegQueryValueExA)>("RegQueryValueExA");
    if (queriesBeforeFailure >= 0 && queriesBeforeFailure-- == 0)
        return refusal;
    return platform(key, name, reserved, type, data, size);
}

LSTATUS WINAPI removeValue(HKEY key, LPCSTR name) {
    static const auto platform = original<decltype(&RegDeleteValueA)>("RegDeleteValueA");
    return deleteFails ? refusal : platform(key, name);
}

DWORD WINAPI removeKey(HKEY root, LPCSTR subkey) {
    static const auto platform =
        test::platformFunction<decltype(&SHDeleteKeyA)>("shlwapi.dll", "SHDeleteKeyA");
    return deletionsAnswer ? *deletionsAnswer : platform(root, subkey);
}

HANDLE WINAPI makeMutex(LPSECURITY_ATTRIBUTES security, BOOL owned, LPCSTR name) {
    static const auto platform =
        test::platformFunction<decltype(&CreateMutexA)>("kernel32.dll", "CreateMutexA");
    if (!mutexFails)
        return platform(security, owned, name);
    SetLastError(ERROR_ALREADY_EXISTS);
    return nullptr;
}

HRESULT WINAPI refusedInitialization(LPVOID) {
    return E_OUTOFMEMORY;
}

int componentLibraryClosings = 0;

void WINAPI countedClosing() {
    ++componentLibraryClosings;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(RegOpenKeyExA, "_RegOpenKeyExA@20", open);
SCHEDULER_REPLACE_IMPORT(RegCreateKeyExA, "_RegCreateKeyExA@36", create);
SCHEDULER_REPLACE_IMPORT(RegSetValueExA, "_RegSetValueExA@24", set);
SCHEDULER_REPLACE_IMPORT(RegQueryValueExA, "_RegQueryValueExA@24", query);
SCHEDULER_REPLACE_IMPORT(RegDeleteValueA, "_RegDeleteValueA@8", removeValue);
SCHEDULER_REPLACE_IMPORT(SHDeleteKeyA, "_SHDeleteKeyA@8", removeKey);
SCHEDULER_REPLACE_IMPORT(CreateMutexA, "_CreateMutexA@12", makeMutex);

SCHEDULER_REPLACE_IMPORT(CoInitialize, "_CoInitialize@4", refusedInitialization);
SCHEDULER_REPLACE_IMPORT(CoUninitialize, "_CoUninitialize@0", countedClosing);

namespace base {
namespace {

class Refusals : public test::RegistryTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(writeString(HKEY_CURRENT_USER, path("Text"), "stored"));
        ASSERT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Number"), 5));
        ASSERT_TRUE(writeBinary(HKEY_CURRENT_USER, path("Bytes"), "bytes"));
    }

    void expectNothingRead() const {
        const unsigned handles = test::handleCount();
        std::string text = "old";
        EXPECT_FALSE(readString(HKEY_CURRENT_USER, path("Text"), text));
        EXPECT_EQ(text, "old");
        rearm();
        EXPECT_FALSE(readBinary(HKEY_CURRENT_USER, path("Bytes"), text));
        EXPECT_EQ(text, "old");
        rearm();
        std::uint32_t number = 7;
        EXPECT_FALSE(readNumber(HKEY_CURRENT_USER, path("Number"), number));
        EXPECT_EQ(number, 7U);
        rearm();
        EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("Number"), 9), 9U);
        EXPECT_EQ(test::handleCount(), handles);
    }

    void expectNothingWritten() const {
        const unsigned handles = test::handleCount();
        EXPECT_FALSE(writeString(HKEY_CURRENT_USER, path("Text"), "new"));
        EXPECT_FALSE(writeNumber(HKEY_CURRENT_USER, path("Number"), 6));
        EXPECT_FALSE(writeBinary(HKEY_CURRENT_USER, path("Bytes"), "new"));
        EXPECT_EQ(test::handleCount(), handles);
    }

    void TearDown() override {
        openFails = createFails = setFails = deleteFails = false;
        queriesBeforeFailure = -1;
        deletionsAnswer.reset();
        EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Text")), "stored");
        EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("Number"), 0), 5U);
    }

    /// The failure of a query comes once; the reads that follow get it as well.
    void rearm() const {
        if (!openFails)
            queriesBeforeFailure = failingQuery_;
    }

    int failingQuery_ = 0;
};

TEST_F(Refusals, AKeyThatCannotBeOpenedIsNotRead) {
    openFails = true;
    expectNothingRead();
    EXPECT_FALSE(deleteValue(HKEY_CURRENT_USER, path("Text")));
}

TEST_F(Refusals, AValueThatCannotBeAskedForIsNotRead) {
    rearm();
    expectNothingRead();
}

TEST_F(Refusals, AKeyThatCannotBeMadeIsNotWritten) {
    createFails = true;
    expectNothingWritten();
}

TEST_F(Refusals, AValueThatCannotBeSetIsNotWritten) {
    setFails = true;
    expectNothingWritten();
}

TEST_F(Refusals, AValueThatCannotBeDeletedStays) {
    deleteFails = true;
    const unsigned handles = test::handleCount();
    EXPECT_FALSE(deleteValue(HKEY_CURRENT_USER, path("Text")));
    EXPECT_EQ(test::handleCount(), handles);
}

TEST_F(Refusals, OnlyAnAnswerAbove0MeansThatAKeyWasNotDeleted) {
    const struct {
        DWORD answer;
        bool deleted;
    } rows[] = {{0, true}, {0x80000000, true}, {0xFFFFFFFF, true}, {1, false}, {0x7FFFFFFF, false}};
    for (const auto& row : rows) {
        deletionsAnswer = row.answer;
        EXPECT_EQ(deleteKey(HKEY_CURRENT_USER, path("Key")), row.deleted) << row.answer;
    }
}

// The length is known then, but the text is not there.
TEST_F(Refusals, ATextThatGoesAwayMeanwhileIsNotRead) {
    std::string text = "old";
    const unsigned handles = test::handleCount();
    queriesBeforeFailure = 1;
    EXPECT_FALSE(readString(HKEY_CURRENT_USER, path("Text"), text));
    queriesBeforeFailure = 1;
    EXPECT_FALSE(readBinary(HKEY_CURRENT_USER, path("Bytes"), text));
    EXPECT_EQ(text, "old");
    EXPECT_EQ(test::handleCount(), handles);
}

TEST(RefusedComponentLibrary, IsNotClosedEither) {
    // Runs after what is registered behind it.
    std::atexit([] {
        if (componentLibraryClosings != 0) {
            std::fprintf(stderr, "The component library was closed, but never opened.\n");
            std::_Exit(1);
        }
    });
    startComponentLibrary();
}

TEST(RefusedMutex, IsNoOtherInstance) {
    mutexFails = true;
    EXPECT_FALSE(createInstanceMutex(test::uniqueName("refused")));
    mutexFails = false;
}

} // namespace
} // namespace base
