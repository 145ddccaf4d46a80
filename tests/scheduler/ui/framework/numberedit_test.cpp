#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/numberedit.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

#include <ostream>

namespace framework {

std::ostream& operator<<(std::ostream& out, const NumberCorrection& correction) {
    return out << correction.value << (correction.selectsAll ? " selected" : " with the caret behind it");
}

} // namespace framework

namespace {

using framework::NumberCorrection;
using framework::NumberRange;
using test::pumpUntilIdle;
using test::typeInto;

constexpr NumberRange delay{0, 1440};
constexpr NumberRange minuteOfHour{0, 59};
constexpr NumberRange dayOfMonth{1, 31};
constexpr NumberRange timeLimit{0, 9999};

TEST(NumberRule, RoomForTheDigitsOfTheUpperEnd) {
    EXPECT_EQ(framework::digitsOf(delay), 4);
    EXPECT_EQ(framework::digitsOf(minuteOfHour), 2);
    EXPECT_EQ(framework::digitsOf(dayOfMonth), 2);
    EXPECT_EQ(framework::digitsOf(timeLimit), 4);
    EXPECT_EQ(framework::digitsOf({0, 9}), 1);
    EXPECT_EQ(framework::digitsOf({0, 10}), 2);
}

TEST(NumberRule, ReadsTheDigitsAtTheStart) {
    EXPECT_EQ(framework::numberFromText(""), 0);
    EXPECT_EQ(framework::numberFromText("x"), 0);
    EXPECT_EQ(framework::numberFromText("12x34"), 12);
    EXPECT_EQ(framework::numberFromText("0042"), 42);
    EXPECT_EQ(framework::numberFromText("99999999999"), 2147483647);
}

struct CorrectionCase {
    const char* text;
    NumberRange range;
    std::optional<NumberCorrection> expected;
};

TEST(NumberRule, CorrectsWhatIsOutsideTheRangeAndZero) {
    const NumberCorrection none;
    const std::optional<NumberCorrection> stays;
    const NumberCorrection zeroSelected{0, true};
    const CorrectionCase cases[] = {
        {"", delay, zeroSelected},
        {"0", delay, zeroSelected},
        {"000", delay, zeroSelected},
        {"1", delay, stays},
        {"0001", delay, stays},
        {"1440", delay, stays},
        {"1441", delay, NumberCorrection{1440, false}},
        {"9999", delay, NumberCorrection{1440, false}},
        {"0", minuteOfHour, zeroSelected},
        {"59", minuteOfHour, stays},
        {"60", minuteOfHour, NumberCorrection{59, false}},
        {"", dayOfMonth, NumberCorrection{1, true}},
        {"0", dayOfMonth, NumberCorrection{1, true}},
        {"1", dayOfMonth, stays},
        {"31", dayOfMonth, stays},
        {"32", dayOfMonth, NumberCorrection{31, false}},
        {"0", timeLimit, zeroSelected},
        {"9999", timeLimit, stays},
        {"10000", timeLimit, NumberCorrection{9999, false}},
        {"-5", dayOfMonth, NumberCorrection{1, true}},
    };
    for (const CorrectionCase& row : cases)
        EXPECT_EQ(framework::correctNumber(row.text, row.range), row.expected)
            << '"' << row.text << "\" in " << row.range.low << ".." << row.range.high;
}

class NumberDialog : public framework::Dialog {
public:
    NumberDialog(NumberRange range, std::int32_t& field)
        : Dialog(IDD_CONTROLS), number(*this, IDC_NUMBER, range, framework::bindNumber(field)) {}

    framework::NumberEdit number;
};

struct Shown {
    std::string text;
    int from = 0;
    int to = 0;
    bool operator==(const Shown&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Shown& shown) {
    return out << '"' << shown.text << "\" selected from " << shown.from << " to " << shown.to;
}

class NumberEdit : public testing::Test {
protected:
    void open(NumberRange range) {
        dialog = std::make_unique<NumberDialog>(range, field);
        ASSERT_TRUE(dialog->open(nullptr));
    }

    HWND handle() const { return dialog->number.handle(); }

    Shown shown() const {
        DWORD from = 0;
        DWORD to = 0;
        SendMessageA(handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        return {dialog->number.text(), static_cast<int>(from), static_cast<int>(to)};
    }

    void empty() {
        SendMessageA(handle(), EM_SETSEL, 0, -1);
        typeInto(handle(), "\b");
    }

    /// Everything that shows while a text is typed key by key into an emptied field.
    std::vector<Shown> type(const char* text) {
        empty();
        std::vector<Shown> steps;
        for (; *text; ++text) {
            typeInto(handle(), std::string(1, *text).c_str());
            steps.push_back(shown());
        }
        return steps;
    }

    std::int32_t field = 20;
    std::unique_ptr<NumberDialog> dialog;
};

using Steps = std::vector<Shown>;

TEST_F(NumberEdit, LoadsAndStoresItsField) {
    open(delay);
    EXPECT_EQ(dialog->number.text(), "20");
    SetWindowTextA(handle(), "35");
    dialog->store();
    EXPECT_EQ(field, 35);
}

TEST_F(NumberEdit, StoresTheNumberAsReadWhateverTheRange) {
    open(delay);
    SetWindowTextA(handle(), "5000");
    dialog->store();
    EXPECT_EQ(field, 5000);
}

TEST_F(NumberEdit, TakesDigitsOnly) {
    open(delay);
    EXPECT_EQ(type("1x2"), (Steps{{"1", 1, 1}, {"1", 1, 1}, {"12", 2, 2}}));
}

TEST_F(NumberEdit, Typing2000IntoADelayShows1440WithTheFourthDigit) {
    open(delay);
    EXPECT_EQ(type("2000"), (Steps{{"2", 1, 1}, {"20", 2, 2}, {"200", 3, 3}, {"1440", 4, 4}}));
}

TEST_F(NumberEdit, Typing5000IntoADelayShows1440WithTheFourthDigit) {
    open(delay);
    EXPECT_EQ(type("5000"), (Steps{{"5", 1, 1}, {"50", 2, 2}, {"500", 3, 3}, {"1440", 4, 4}}));
}

TEST_F(NumberEdit, NoMoreCharactersThanTheUpperEndHas) {
    open(delay);
    EXPECT_EQ(type("12345"),
              (Steps{{"1", 1, 1}, {"12", 2, 2}, {"123", 3, 3}, {"1234", 4, 4}, {"1234", 4, 4}}));
}

TEST_F(NumberEdit, EmptyingADelayShows0Selected) {
    open(delay);
    empty();
    EXPECT_EQ(shown(), (Shown{"0", 0, 1}));
}

TEST_F(NumberEdit, AZeroIsReplacedByTheNextDigit) {
    open(timeLimit);
    EXPECT_EQ(type("07"), (Steps{{"0", 0, 1}, {"7", 1, 1}}));
}

TEST_F(NumberEdit, MinutesOfTheHour) {
    open(minuteOfHour);
    EXPECT_EQ(type("60"), (Steps{{"6", 1, 1}, {"59", 2, 2}}));
    EXPECT_EQ(type("591"), (Steps{{"5", 1, 1}, {"59", 2, 2}, {"59", 2, 2}}));
}

TEST_F(NumberEdit, Typing0IntoTheDayOfMonthShows1SelectedAndTheNextDigitReplacesIt) {
    open(dayOfMonth);
    EXPECT_EQ(type("05"), (Steps{{"1", 0, 1}, {"5", 1, 1}}));
    EXPECT_EQ(type("32"), (Steps{{"3", 1, 1}, {"31", 2, 2}}));
}

TEST_F(NumberEdit, TimeLimit) {
    open(timeLimit);
    EXPECT_EQ(type("99999"),
              (Steps{{"9", 1, 1}, {"99", 2, 2}, {"999", 3, 3}, {"9999", 4, 4}, {"9999", 4, 4}}));
}

TEST_F(NumberEdit, AnIdlePassLeavesAGoodTextAndItsCaretAlone) {
    open(delay);
    SendMessageA(handle(), EM_SETSEL, 1, 1);
    pumpUntilIdle();
    EXPECT_EQ(shown(), (Shown{"20", 1, 1}));
}

TEST_F(NumberEdit, ARepeatedIdlePassWritesNothing) {
    open(delay);
    empty();
    SendMessageA(handle(), EM_SETMODIFY, TRUE, 0);
    pumpUntilIdle();
    EXPECT_TRUE(SendMessageA(handle(), EM_GETMODIFY, 0, 0)) << "writing a text clears the mark";
}

} // namespace
