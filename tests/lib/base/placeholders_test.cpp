#include "lib/base/placeholders.h"

#include <gtest/gtest.h>

namespace base {
namespace {

TEST(Placeholders, GoWithWhatTheyLeave) {
    const struct {
        const char* registered;
        const char* expected;
    } rows[] = {
        {"spider.exe", "spider.exe"},
        {"spider.exe %1", "spider.exe"},
        {"spider.exe \"%1\" %2 \"%9\"", "spider.exe"},
        {"spider.exe %1%2%3%4%5%6%7%8%9", "spider.exe"},
        {"spider.exe %1 /open", "spider.exe  /open"},
        {"\"spider.exe\" /open \"%1\"", "\"spider.exe\" /open"},
        {"\"spider.exe\" \"/open:%1\"", "\"spider.exe\" \"/open:\""},
        {"spider.exe %0 %* %L %%", "spider.exe %0 %* %L %%"},
        {"spider.exe %%1", "spider.exe %"},
        {"spider.exe \"\" x", "spider.exe  x"}, // a pair of quotes goes wherever it came from
        {"spider.exe \"%1\"\"%2\"", "spider.exe"},
        {"spider.exe \"\"\"", "spider.exe \""},
        {" \t\r\n\f\"spider.exe\" \f\r\n\t ", "\"spider.exe\""},
        {"\v spider.exe", "\v spider.exe"},
        {"%1", ""},
        {"\"%1\"", ""},
        {"\"%1\" %*", "%*"},
        {"spider%12.exe", "spider2.exe"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(withoutPlaceholders(row.registered), row.expected) << row.registered;
}

// With work that grows with the square of the length this takes longer than the test may.
TEST(Placeholders, MillionsOfEmptyQuotesGoAtOnce) {
    std::string command;
    for (int i = 0; i < 8'000'000; ++i)
        command += "a\"\"";
    EXPECT_EQ(withoutPlaceholders(command), std::string(8'000'000, 'a'));
}

} // namespace
} // namespace base
