#include "scheduler/ui/framework/fieldbinding.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using base::TimeValue;
using framework::bindDateTime;
using framework::bindFlag;
using framework::bindNumber;
using framework::bindText;
using framework::bindTimeOfDay;

enum class Choice : std::int32_t { None = 0, Some = 3 };

template<class Field>
class NumberFields : public testing::Test {};
using NumberFieldTypes = testing::Types<std::int32_t, std::uint32_t, Choice>;
TYPED_TEST_SUITE(NumberFields, NumberFieldTypes, );

TYPED_TEST(NumberFields, GiveAndTakeEveryValueOf32Bits) {
    auto field = static_cast<TypeParam>(7);
    const auto binding = bindNumber(field);
    EXPECT_EQ(binding->get(), 7);
    for (const std::int32_t value :
         {0, 3, -1, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        binding->set(value);
        EXPECT_EQ(field, static_cast<TypeParam>(value));
        EXPECT_EQ(binding->get(), value);
    }
    field = static_cast<TypeParam>(12);
    EXPECT_EQ(binding->get(), 12) << "the field is read anew each time";
}

template<class Field>
class FlagFields : public testing::Test {};
using FlagFieldTypes = testing::Types<bool, std::uint8_t>;
TYPED_TEST_SUITE(FlagFields, FlagFieldTypes, );

TYPED_TEST(FlagFields, AreSetToOneByAnyValueButZero) {
    TypeParam field = 0;
    const auto binding = bindFlag(field);
    EXPECT_EQ(binding->get(), 0);
    for (const std::int32_t value : {1, 2, -1, 256}) {
        field = 0;
        binding->set(value);
        EXPECT_EQ(int{field}, 1) << value;
        EXPECT_EQ(binding->get(), 1);
    }
    binding->set(0);
    EXPECT_EQ(int{field}, 0);
}

TEST(FlagBinding, GivesTheByteAsItIs) {
    std::uint8_t field = 2;
    EXPECT_EQ(bindFlag(field)->get(), 2);
}

TEST(TextBinding, GivesACopyAndAssigns) {
    std::string field = "before";
    const auto binding = bindText(field);
    const std::string copy = binding->get();
    binding->set("after");
    EXPECT_EQ(copy, "before");
    EXPECT_EQ(field, "after");
}

TEST(TimeOfDayBinding, GivesAndTakesTheTimeAsItIs) {
    TimeValue field(1234567890);
    const auto binding = bindTimeOfDay(field);
    EXPECT_EQ(binding->get(), TimeValue(1234567890));
    binding->set(TimeValue(17));
    EXPECT_EQ(field, TimeValue(17));
}

TEST(DateTimeBinding, GivesTheTextAndTakesWhatTheParserReads) {
    TimeValue field = TimeValue::fromLocal(2005, 7, 23, 19, 54, 0, -1);
    const auto binding = bindDateTime(field);
    EXPECT_EQ(binding->get(), "07/23/05 07:54 pm");
    binding->set("7/24/2005 8:05 am");
    EXPECT_EQ(field, TimeValue::fromLocal(2005, 7, 24, 8, 5, 0, -1));
    binding->set("no date");
    EXPECT_EQ(field, TimeValue());
}

} // namespace
