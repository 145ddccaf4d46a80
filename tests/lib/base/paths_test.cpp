#include "lib/base/locale.h"
#include "lib/base/paths.h"

#include <gmock/gmock.h>

namespace base {
namespace {

struct PathCase {
    const char* path;
    const char* directory;
    const char* fileName;
    const char* baseName;
    const char* extension;
};

class PathTable : public testing::TestWithParam<PathCase> {};

TEST_P(PathTable, IsTakenApart) {
    const PathCase& row = GetParam();
    EXPECT_EQ(directoryOf(row.path), row.directory) << row.path;
    EXPECT_EQ(fileNameOf(row.path), row.fileName) << row.path;
    EXPECT_EQ(baseNameOf(row.path), row.baseName) << row.path;
    EXPECT_EQ(extensionOf(row.path), row.extension) << row.path;
    EXPECT_EQ(directoryOf(row.path) + fileNameOf(row.path), row.path);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, PathTable,
    testing::Values(PathCase{R"(C:\Dir.old\File)", R"(C:\Dir.old\)", "File", "File", ""},
                    PathCase{"File.KRA", "", "File.KRA", "File", "kra"},
                    PathCase{"a/b/c", "a/b/", "c", "c", ""},
                    PathCase{R"(C:\Sites\News.krB)", R"(C:\Sites\)", "News.krB", "News", "krb"},
                    // The slash is no separator where there is a backslash.
                    PathCase{R"(C:\a/b.c)", R"(C:\)", "a/b.c", "a/b", "c"},
                    PathCase{R"(a/b\c)", R"(a/b\)", "c", "c", ""},
                    PathCase{R"(\\server\share\x.y)", R"(\\server\share\)", "x.y", "x", "y"},
                    PathCase{"archive.tar.gz", "", "archive.tar.gz", "archive.tar", "gz"},
                    PathCase{"a.b/c", "a.b/", "c", "c", ""}, PathCase{"name.", "", "name.", "name", ""},
                    PathCase{".profile", "", ".profile", "", "profile"},
                    PathCase{R"(C:\folder\)", R"(C:\folder\)", "", "", ""},
                    PathCase{"C:name.x", "", "C:name.x", "C:name", "x"}, PathCase{"", "", "", "", ""}));

TEST(Paths, HoldBytesAboveAscii) {
    EXPECT_EQ(fileNameOf("C:\\\xD6l\\\xE4.KRA"), "\xE4.KRA");
    EXPECT_EQ(directoryOf("C:\\\xD6l\\\xE4.KRA"), "C:\\\xD6l\\");
    EXPECT_EQ(baseNameOf("C:\\\xD6l\\\xE4.KRA"), "\xE4");
    EXPECT_EQ(extensionOf("C:\\\xD6l\\\xE4.KRA"), "kra");
}

TEST(ExtensionOf, IsLoweredByTheCodePage) {
    const std::string path = "x.\xC4";
    EXPECT_EQ(extensionOf(path), std::string(1, lowerCase('\xC4')));
}

TEST(IsDrivePath, WantsLetterColonBackslash) {
    EXPECT_TRUE(isDrivePath(R"(C:\)"));
    EXPECT_TRUE(isDrivePath(R"(a:\x)"));
    EXPECT_TRUE(isDrivePath(R"(Z:\x.kra)"));
    EXPECT_TRUE(isDrivePath(R"(z:\)"));
    EXPECT_TRUE(isDrivePath(R"(A:\)"));
    EXPECT_FALSE(isDrivePath(""));
    EXPECT_FALSE(isDrivePath("C:"));
    EXPECT_FALSE(isDrivePath("C:x"));
    EXPECT_FALSE(isDrivePath("C:/x"));
    EXPECT_FALSE(isDrivePath(R"(1:\x)"));
    EXPECT_FALSE(isDrivePath(R"(@:\x)"));
    EXPECT_FALSE(isDrivePath(R"([:\x)"));
    EXPECT_FALSE(isDrivePath(R"(`:\x)"));
    EXPECT_FALSE(isDrivePath(R"({:\x)"));
    EXPECT_FALSE(isDrivePath("\xC1:\\x"));
    for (int code = 0; code < 256; ++code) {
        const bool letter = (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
        EXPECT_EQ(isDrivePath(static_cast<char>(code) + std::string(":\\")), letter) << code;
    }
    EXPECT_FALSE(isDrivePath(R"(\\server\share)"));
    EXPECT_FALSE(isDrivePath(R"(C;\x)"));
}

} // namespace
} // namespace base
