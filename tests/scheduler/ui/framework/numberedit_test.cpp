#include "scheduler/ui/framework/numberedit.h"
#include "tests/scheduler/ui/framework/controldialog.h"
#include "tests/scheduler/ui/framework/pumping.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using framework::NumberRange;
using test::pumpUntilIdle;
using test::typeInto;

constexpr NumberRange delay{0, 1440};
constexpr NumberRange minuteOfHour{0, 59};
constexpr NumberRange dayOfMonth{1, 31};
constexpr NumberRange timeLimit{0, 9999};

class NumberEdit : public test::ControlDialogTest {
protected:
    void open(NumberRange range) {
        number.emplace(dialog, IDC_NUMBER, range, framework::bindNumber(field));
        ControlDialogTest::open();
    }

    /// The text with | at the caret or [] around the selection.
    std::string shown() const {
        std::size_t from = 0;
        std::size_t to = 0;
        SendMessageA(item(IDC_NUMBER), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                     reinterpret_cast<LPARAM>(&to));
        std::string text = number->text();
        text.insert(to, from == to ? "|" : "]");
        return from == to ? text : text.insert(from, "[");
    }

    void empty() {
        SendMessageA(item(IDC_NUMBER), EM_SETSEL, 0, -1);
        typeInto(item(IDC_NUMBER), "\b");
    }

    std::int32_t field = 20;
    std::optional<framework::NumberEdit> number;
};

TEST_F(NumberEdit, TakesAsManyDigitsAsItsUpperBound) {
    for (const auto& [high, digits] : {std::pair{1440, 4}, {59, 2}, {31, 2}, {9999, 4}, {9, 1}, {10, 2}})
        EXPECT_EQ(framework::digitsOf({0, high}), digits) << high;
}

TEST_F(NumberEdit, ReadsLeadingDigits) {
    EXPECT_EQ(framework::numberFromText(""), 0);
    EXPECT_EQ(framework::numberFromText("x"), 0);
    EXPECT_EQ(framework::numberFromText("12x34"), 12);
    EXPECT_EQ(framework::numberFromText("0042"), 42);
    EXPECT_EQ(framework::numberFromText("99999999999"), 2147483647);
}

TEST_F(NumberEdit, CorrectsTextsThatAreZeroOrOutOfRange) {
    const struct {
        const char* text;
        NumberRange range;
        std::string expected; ///< empty for no correction
    } cases[] = {{"", delay, "[0]"},        {"0", delay, "[0]"},      {"000", delay, "[0]"},
                 {"1", delay, ""},          {"0001", delay, ""},      {"1440", delay, ""},
                 {"1441", delay, "1440|"},  {"9999", delay, "1440|"}, {"", dayOfMonth, "[1]"},
                 {"0", dayOfMonth, "[1]"},  {"1", dayOfMonth, ""},    {"31", dayOfMonth, ""},
                 {"32", dayOfMonth, "31|"}, {"-5", dayOfMonth, "[1]"}};
    for (const auto& row : cases) {
        std::string corrected;
        if (const auto correction = framework::correctNumber(row.text, row.range)) {
            corrected = std::to_string(correction->value);
            corrected = correction->selectsAll ? "[" + corrected + "]" : corrected + "|";
        }
        EXPECT_EQ(corrected, row.expected)
            << '"' << row.text << "\" in " << row.range.low << ".." << row.range.high;
    }
}

TEST_F(NumberEdit, LoadsItsFieldAndStoresTheNumberUnclamped) {
    open(delay);
    EXPECT_EQ(number->text(), "20");
    SetWindowTextA(item(IDC_NUMBER), "5000");
    dialog.store();
    EXPECT_EQ(field, 5000);
}

TEST_F(NumberEdit, IsCorrectedAfterEachKey) {
    const struct {
        NumberRange range;
        const char* keys;
        std::string shown; ///< the text after each key
    } rows[] = {{delay, "1x2", " 1| 1| 12|"},
                {delay, "2000", " 2| 20| 200| 1440|"},
                {delay, "12345", " 1| 12| 123| 1234| 1234|"},
                {timeLimit, "07", " [0] 7|"},
                {minuteOfHour, "591", " 5| 59| 59|"},
                {dayOfMonth, "05", " [1] 5|"},
                {dayOfMonth, "32", " 3| 31|"}};
    for (const auto& row : rows) {
        open(row.range);
        empty();
        std::string steps;
        for (const char* key = row.keys; *key; ++key) {
            typeInto(item(IDC_NUMBER), std::string(1, *key).c_str());
            steps += " " + shown();
        }
        EXPECT_EQ(steps, row.shown) << row.keys << " up to " << row.range.high;
    }
}

TEST_F(NumberEdit, WhenEmptiedSelectsItsLowerBoundAndLaterIdlePassesWriteNothing) {
    open(delay);
    empty();
    EXPECT_EQ(shown(), "[0]");
    SendMessageA(item(IDC_NUMBER), EM_SETMODIFY, TRUE, 0);
    pumpUntilIdle();
    EXPECT_TRUE(SendMessageA(item(IDC_NUMBER), EM_GETMODIFY, 0, 0))
        << "setting the text clears the modified flag";
}

TEST_F(NumberEdit, AnIdlePassKeepsAValidTextAndItsCaret) {
    open(delay);
    SendMessageA(item(IDC_NUMBER), EM_SETSEL, 1, 1);
    pumpUntilIdle();
    EXPECT_EQ(shown(), "2|0");
}

} // namespace
