#include "lib/base/locale.h"
#include "lib/base/paths.h"

#include <gtest/gtest.h>

#include <string>

namespace base {
namespace {

TEST(Paths, AreSplitIntoTheirParts) {
    const struct {
        const char *path, *directory, *fileName, *baseName, *extension;
    } rows[] = {
        {R"(C:\Dir.old\File)", R"(C:\Dir.old\)", "File", "File", ""},
        {"File.KRA", "", "File.KRA", "File", "kra"},
        {"a/b/c", "a/b/", "c", "c", ""},
        {R"(C:\Sites\News.krB)", R"(C:\Sites\)", "News.krB", "News", "krb"},
        // With a backslash present, a slash is not a separator.
        {R"(C:\a/b.c)", R"(C:\)", "a/b.c", "a/b", "c"},
        {R"(a/b\c)", R"(a/b\)", "c", "c", ""},
        {R"(\\server\share\x.y)", R"(\\server\share\)", "x.y", "x", "y"},
        {"archive.tar.gz", "", "archive.tar.gz", "archive.tar", "gz"},
        {"a.b/c", "a.b/", "c", "c", ""},
        {"name.", "", "name.", "name", ""},
        {".profile", "", ".profile", "", "profile"},
        {R"(C:\folder\)", R"(C:\folder\)", "", "", ""},
        {"C:name.x", "", "C:name.x", "C:name", "x"},
        {"", "", "", "", ""},
        {"C:\\\xD6l\\\xE4.KRA", "C:\\\xD6l\\", "\xE4.KRA", "\xE4", "kra"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(directoryOf(row.path), row.directory) << row.path;
        EXPECT_EQ(fileNameOf(row.path), row.fileName) << row.path;
        EXPECT_EQ(baseNameOf(row.path), row.baseName) << row.path;
        EXPECT_EQ(extensionOf(row.path), row.extension) << row.path;
    }
}

TEST(Paths, ExtensionIsLoweredByTheCodePage) {
    EXPECT_EQ(extensionOf("x.\xC4"), std::string(1, lowerCase('\xC4')));
}

TEST(Paths, DrivePathStartsWithALetterColonAndBackslash) {
    for (int code = 0; code < 256; ++code) {
        const bool letter = (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
        EXPECT_EQ(isDrivePath(static_cast<char>(code) + std::string(":\\")), letter) << code;
    }
    EXPECT_TRUE(isDrivePath(R"(Z:\x.kra)"));
    for (const char* path : {"", "C:", "C:x", "C:/x", R"(\\server\share)", R"(C;\x)"})
        EXPECT_FALSE(isDrivePath(path)) << path;
}

} // namespace
} // namespace base
