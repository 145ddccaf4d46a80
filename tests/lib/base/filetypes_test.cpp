#include "lib/base/filetypes.h"
#include "lib/base/handles.h"
#include "tests/support/registrykey.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace base {
namespace {

using namespace std::string_literals;

/// Redirects HKEY_CLASSES_ROOT for this process to a test key.
class FileTypes : public testing::Test {
protected:
    FileTypes() {
        EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, key_.path().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                  nullptr, classes_.receive(), nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_.get()), ERROR_SUCCESS);
    }
    ~FileTypes() override { RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr); }

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

TEST_F(FileTypes, TypeIsTheDefaultValueOfTheExtensionsKey) {
    EXPECT_EQ(fileTypeOf(file_), "");
    registerType();
    for (const std::string& file : {file_, "Project.krb.kra"s, "PROJECT.KRA"s})
        EXPECT_EQ(fileTypeOf(file), "CorvaneProject") << file;
    for (const char* file : {"Project.krab", "C:\\Dir.x\\Project"})
        EXPECT_EQ(fileTypeOf(file), "") << file;
}

TEST_F(FileTypes, CommandIsEmptyWhenAnyPartIsMissing) {
    EXPECT_EQ(associatedCommand(file_, "open"), "");
    registerType();
    EXPECT_EQ(associatedCommand(file_, "open"), "");
    registerCommand("open", "spider.exe");
    EXPECT_EQ(associatedCommand(file_, "print"), "");
    EXPECT_EQ(associatedCommand("Project", "open"), "");
    EXPECT_EQ(associatedCommand("", "open"), "");
}

TEST_F(FileTypes, CommandLosesPlaceholdersAndKeepsVariables) {
    registerType();
    registerCommand("open", "\"C:\\Spider Home\\spider.exe\" \"%1\"");
    registerCommand("print", "  printer.exe \"%1\" /print %2 ");
    registerCommand("edit", "%SystemRoot%\\spider.exe \"%1\"", REG_EXPAND_SZ);
    EXPECT_EQ(associatedCommand(file_, "open"), "\"C:\\Spider Home\\spider.exe\"");
    EXPECT_EQ(associatedCommand(file_, "print"), "printer.exe  /print");
    EXPECT_EQ(associatedCommand(file_, "edit"), "%SystemRoot%\\spider.exe");
}

} // namespace
} // namespace base
