#include "scheduler/run/edition.h"

#include <gtest/gtest.h>

namespace scheduler {
namespace {

TEST(Edition, FollowsTheExtension) {
    struct Row {
        const char* path;
        int edition;
        const char* name;
    };
    const Row rows[] = {
        {"C:\\a\\news.kra", 1, "Corvane Delta"},
        {"C:\\a\\news.krb", 2, "Corvane Sigma"},
        {"C:\\a\\news.krc", 3, "Corvane Omega"},
        {"news.Kra", 1, "Corvane Delta"},
        {"a/b/news.krc", 3, "Corvane Omega"},
        {"C:\\a.kra\\news", 0, ""},
        {"C:\\a\\news.kra.bak", 0, ""},
        {"C:\\a\\news.bak.kra", 1, "Corvane Delta"},
        {"C:\\a\\news.krd", 0, ""},
        {"C:\\a\\news.krab", 0, ""},
        {"C:\\a\\news.kr", 0, ""},
        {"C:\\a\\kra", 0, ""},
        {"C:\\a\\.kra", 1, "Corvane Delta"},
        {"C:\\a\\news.", 0, ""},
        {"", 0, ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(editionOf(row.path), row.edition) << row.path;
        EXPECT_EQ(editionName(row.path), row.name) << row.path;
    }
}

TEST(Edition, CapitalExtensionIsLoweredFirst) {
    EXPECT_EQ(editionOf("NEWS.KRB"), 2);
    EXPECT_EQ(editionName("NEWS.KRB"), "Corvane Sigma");
}

} // namespace
} // namespace scheduler
