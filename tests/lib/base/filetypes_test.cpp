#include "lib/base/filetypes.h"
#include "lib/base/handles.h"
#include "tests/support/handlecount.h"
#include "tests/support/registrykey.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <string>

namespace base {
namespace {

using namespace std::string_literals;

/// Lets this process alone see other classes than the system's: what the test registers.
class FileTypeTest : public testing::Test {
protected:
    FileTypeTest() {
        EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, key_.path().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                  nullptr, classes_.receive(), nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_.get()), ERROR_SUCCESS);
    }
    ~FileTypeTest() override {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        classes_.reset();
    }

    static void registerType() {
        test::storeValue(HKEY_CLASSES_ROOT, ".kra", "", REG_SZ, "CorvaneProject\0"s);
    }
    static void registerCommand(const std::string& verb, const std::string& command, DWORD type = REG_SZ) {
        test::storeValue(HKEY_CLASSES_ROOT, "CorvaneProject\\shell\\" + verb + "\\command", "", type,
                         command + '\0');
    }

    const std::string file_ = "C:\\Dir.x\\Project.kra";

private:
    const test::OwnKey key_;
    RegistryKey classes_;
};

TEST_F(FileTypeTest, IsTheDefaultValueOfTheExtensionsKey) {
    EXPECT_EQ(fileTypeOf(file_), "");
    registerType();
    EXPECT_EQ(fileTypeOf(file_), "CorvaneProject");
    EXPECT_EQ(fileTypeOf("Project.krb.kra"), "CorvaneProject");
    EXPECT_EQ(fileTypeOf("PROJECT.KRA"), "CorvaneProject");
    EXPECT_EQ(fileTypeOf("Project.krab"), "");
    EXPECT_EQ(fileTypeOf("C:\\Dir.x\\Project"), "");
}

TEST_F(FileTypeTest, CommandIsEmptyWhenAnythingIsMissing) {
    EXPECT_EQ(associatedCommand(file_, "open"), "");
    registerType();
    EXPECT_EQ(associatedCommand(file_, "open"), "");
    registerCommand("open", "\"C:\\Spider\\spider.exe\" \"%1\"");
    EXPECT_EQ(associatedCommand(file_, "print"), "");
    EXPECT_EQ(associatedCommand("Project", "open"), "");
    EXPECT_EQ(associatedCommand("", "open"), "");
}

TEST_F(FileTypeTest, QuotedProgramPathStaysAloneWithoutItsQuotedPlaceholder) {
    registerType();
    registerCommand("open", "\"C:\\Spider Home\\spider.exe\" \"%1\"");
    EXPECT_EQ(associatedCommand(file_, "open"), "\"C:\\Spider Home\\spider.exe\"");
}

TEST_F(FileTypeTest, CommandBelongsToItsVerb) {
    registerType();
    registerCommand("open", "opener.exe %1");
    registerCommand("print", "printer.exe %1");
    EXPECT_EQ(associatedCommand(file_, "open"), "opener.exe");
    EXPECT_EQ(associatedCommand(file_, "print"), "printer.exe");
}

TEST_F(FileTypeTest, CommandLosesPlaceholdersAndWhatTheyLeave) {
    registerType();
    registerCommand("open", "  spider.exe \"%1\" /open %2 ");
    EXPECT_EQ(associatedCommand(file_, "open"), "spider.exe  /open");
}

TEST_F(FileTypeTest, CommandWithAVariableIsNotExpanded) {
    registerType();
    registerCommand("open", "%SystemRoot%\\spider.exe \"%1\"", REG_EXPAND_SZ);
    EXPECT_EQ(associatedCommand(file_, "open"), "%SystemRoot%\\spider.exe");
}

TEST_F(FileTypeTest, NoHandleIsLost) {
    registerType();
    const auto useAll = [this] {
        registerCommand("open", "spider.exe %1");
        EXPECT_EQ(associatedCommand(file_, "open"), "spider.exe");
        EXPECT_EQ(associatedCommand("file.missing-type", "open"), "");
    };
    useAll(); // the platform keeps handles of the predefined keys
    const unsigned before = test::handleCount();
    for (int i = 0; i < 10; ++i)
        useAll();
    EXPECT_EQ(test::handleCount(), before);
}

} // namespace
} // namespace base
