// When the system refuses a call, no data changes and no handle leaks.
#include "lib/base/registry.h"
#include "tests/support/allocations.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/registrykey.h"

#include <windows.h>

#include <shlwapi.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <new>
#include <string>
#include <vector>

SCHEDULER_STAND_IN("advapi32.dll", RegOpenKeyExA, "_RegOpenKeyExA@20");
SCHEDULER_STAND_IN("advapi32.dll", RegCreateKeyExA, "_RegCreateKeyExA@36");
SCHEDULER_STAND_IN("advapi32.dll", RegSetValueExA, "_RegSetValueExA@24");
SCHEDULER_STAND_IN("advapi32.dll", RegQueryValueExA, "_RegQueryValueExA@24");
SCHEDULER_STAND_IN("advapi32.dll", RegDeleteValueA, "_RegDeleteValueA@8");
SCHEDULER_STAND_IN("shlwapi.dll", SHDeleteKeyA, "_SHDeleteKeyA@8");

namespace base {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const HKEY user = HKEY_CURRENT_USER;
constexpr LSTATUS refusal = ERROR_NO_SYSTEM_RESOURCES;
std::vector<REGSAM> opened, created; ///< access rights requested by each call

class RegistryCalls : public test::RegistryTest {
protected:
    /// The first use of a predefined key and the first exception leave handles open.
    static void SetUpTestSuite() {
        EXPECT_FALSE(deleteValue(user, "Software\\Missing"));
        EXPECT_THROW(throw std::bad_alloc(), std::bad_alloc);
        handles_ = test::handleCount();
    }
    static void TearDownTestSuite() { EXPECT_EQ(test::handleCount(), handles_) << "a handle leaked"; }

    void SetUp() override {
        ASSERT_TRUE(writeString(user, path("Text"), std::string(100, 't')));
        ASSERT_TRUE(writeNumber(user, path("Number"), 5));
        ASSERT_TRUE(writeBinary(user, path("Bytes"), std::string(100, 'b')));
        opened.clear();
        created.clear();
        platform::RegOpenKeyExA.onCall = [](HKEY, LPCSTR, DWORD, REGSAM access, PHKEY) {
            opened.push_back(access);
        };
        platform::RegCreateKeyExA.onCall = [](HKEY, LPCSTR, DWORD, LPSTR, DWORD, REGSAM access,
                                              LPSECURITY_ATTRIBUTES, PHKEY,
                                              LPDWORD) { created.push_back(access); };
    }

    void expectNothingRead() const {
        std::string text = "old";
        std::uint32_t number = 7;
        EXPECT_FALSE(readString(user, path("Text"), text));
        EXPECT_FALSE(readBinary(user, path("Bytes"), text));
        EXPECT_FALSE(readNumber(user, path("Number"), number));
        EXPECT_EQ(getNumber(user, path("Number"), 9), 9U);
        EXPECT_EQ(text, "old");
        EXPECT_EQ(number, 7U);
    }

    void expectNothingWritten() const {
        EXPECT_FALSE(writeString(user, path("Text"), "new"));
        EXPECT_FALSE(writeNumber(user, path("Number"), 6));
        EXPECT_FALSE(writeBinary(user, path("Bytes"), "new"));
        EXPECT_EQ(getString(user, path("Text")), std::string(100, 't'));
        EXPECT_EQ(getNumber(user, path("Number"), 0), 5U);
    }

    static inline unsigned handles_ = 0;
};

TEST_F(RegistryCalls, RequestOnlyTheAccessTheyNeed) {
    std::string text;
    std::uint32_t number = 0;
    EXPECT_TRUE(readString(user, path("Text"), text));
    EXPECT_TRUE(readNumber(user, path("Number"), number));
    EXPECT_TRUE(readBinary(user, path("Bytes"), text));
    EXPECT_THAT(opened, ElementsAre(KEY_QUERY_VALUE, KEY_QUERY_VALUE, KEY_QUERY_VALUE));
    EXPECT_THAT(created, IsEmpty());
    opened.clear();
    EXPECT_TRUE(writeString(user, path("Text"), "new"));
    EXPECT_TRUE(writeNumber(user, path("Number"), 1));
    EXPECT_TRUE(writeBinary(user, path("Bytes"), "new"));
    EXPECT_THAT(created, ElementsAre(0x2001F, 0x2001F, 0x2001F)) << "KEY_READ | KEY_WRITE";
    EXPECT_THAT(opened, IsEmpty());
    created.clear();
    EXPECT_TRUE(deleteValue(user, path("Text")));
    EXPECT_THAT(opened, ElementsAre(KEY_SET_VALUE));
    EXPECT_THAT(created, IsEmpty());
}

TEST_F(RegistryCalls, FailWhenTheKeyCannotBeOpened) {
    platform::RegOpenKeyExA.answer = refusal;
    expectNothingRead();
    EXPECT_FALSE(deleteValue(user, path("Text")));
    platform::RegOpenKeyExA.answer.reset();
}

TEST_F(RegistryCalls, ReadsFailWhenTheValueCannotBeQueried) {
    platform::RegQueryValueExA.answer = refusal;
    expectNothingRead();
    std::string text = "old";
    platform::RegQueryValueExA.callsBeforeAnswer = 1; // the value disappears after its length was queried
    EXPECT_FALSE(readString(user, path("Text"), text));
    platform::RegQueryValueExA.callsBeforeAnswer = 1;
    EXPECT_FALSE(readBinary(user, path("Bytes"), text));
    EXPECT_EQ(text, "old");
    platform::RegQueryValueExA.answer.reset();
}

TEST_F(RegistryCalls, ReadsFailWithoutMemory) {
    const std::string text = path("Text"), bytes = path("Bytes");
    std::string out = "old";
    bool read = true;
    {
        const test::RefusedAllocations refused(100);
        read = readString(user, text, out) || readBinary(user, bytes, out);
    }
    EXPECT_FALSE(read);
    EXPECT_EQ(out, "old");
}

TEST_F(RegistryCalls, WritesFailWhenTheKeyOrTheValueIsRefused) {
    platform::RegCreateKeyExA.answer = refusal;
    expectNothingWritten();
    platform::RegCreateKeyExA.answer.reset();
    platform::RegSetValueExA.answer = refusal;
    expectNothingWritten();
    platform::RegSetValueExA.answer.reset();
}

TEST_F(RegistryCalls, DeletingAValueFailsWhenThePlatformRefuses) {
    platform::RegDeleteValueA.answer = refusal;
    EXPECT_FALSE(deleteValue(user, path("Text")));
    platform::RegDeleteValueA.answer.reset();
}

TEST_F(RegistryCalls, KeyCountsAsDeletedUnlessTheResultIsAbove0) {
    const struct {
        DWORD answer;
        bool deleted;
    } rows[] = {{0, true}, {0x80000000, true}, {0xFFFFFFFF, true}, {1, false}, {0x7FFFFFFF, false}};
    for (const auto& [answer, deleted] : rows) {
        platform::SHDeleteKeyA.answer = answer;
        EXPECT_EQ(deleteKey(user, path("Key")), deleted) << answer;
    }
    platform::SHDeleteKeyA.answer.reset();
}

} // namespace
} // namespace base
