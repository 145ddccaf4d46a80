#include "scheduler/ui/framework/fieldbinding.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using base::TimeValue;

enum class Choice : std::int32_t { None = 0, Some = 3 };

template<class Field>
void expectEveryNumber() {
    auto field = static_cast<Field>(7);
    const auto binding = framework::bindNumber(field);
    EXPECT_EQ(binding->get(), 7);
    for (const std::int32_t value :
         {0, 3, -1, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        binding->set(value);
        EXPECT_EQ(field, static_cast<Field>(value));
        EXPECT_EQ(binding->get(), value);
    }
    field = static_cast<Field>(12);
    EXPECT_EQ(binding->get(), 12) << "each call reads the field";
}

TEST(FieldBinding, NumbersCoverAll32BitValues) {
    expectEveryNumber<std::int32_t>();
    expectEveryNumber<std::uint32_t>();
    expectEveryNumber<Choice>();
}

template<class Field>
void expectFlag() {
    Field field = 0;
    const auto binding = framework::bindFlag(field);
    EXPECT_EQ(binding->get(), 0);
    for (const std::int32_t value : {1, 2, -1, 256, 0}) {
        binding->set(value);
        EXPECT_EQ(int{field}, value == 0 ? 0 : 1) << value;
        EXPECT_EQ(binding->get(), value == 0 ? 0 : 1) << value;
        field = 0;
    }
}

TEST(FieldBinding, FlagsStoreAnyNonzeroValueAsOneAndReturnTheirByteUnchanged) {
    expectFlag<bool>();
    expectFlag<std::uint8_t>();
    std::uint8_t field = 2;
    EXPECT_EQ(framework::bindFlag(field)->get(), 2);
    framework::bindFlag(field)->set(0);
    EXPECT_EQ(field, 0);
}

TEST(FieldBinding, TextsAreCopiedAndAssigned) {
    std::string field = "before";
    const auto binding = framework::bindText(field);
    const std::string copy = binding->get();
    binding->set("after");
    EXPECT_EQ(copy, "before");
    EXPECT_EQ(field, "after");
}

TEST(FieldBinding, TimesOfDayAreBoundAsTimesAndDatesAsTexts) {
    TimeValue field(1234567890);
    EXPECT_EQ(framework::bindTimeOfDay(field)->get(), TimeValue(1234567890));
    framework::bindTimeOfDay(field)->set(TimeValue(17));
    EXPECT_EQ(field, TimeValue(17));
    field = TimeValue::fromLocal(2005, 7, 23, 19, 54, 0, -1);
    EXPECT_EQ(framework::bindDateTime(field)->get(), "07/23/05 07:54 pm");
    framework::bindDateTime(field)->set("7/24/2005 8:05 am");
    EXPECT_EQ(field, TimeValue::fromLocal(2005, 7, 24, 8, 5, 0, -1));
    framework::bindDateTime(field)->set("no date");
    EXPECT_EQ(field, TimeValue());
}

} // namespace
