#pragma once

#include "lib/base/dates.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>

namespace framework {

/// Reads and writes a record's field in the form that a control shows. The field must outlive the binding.
template<class Value>
class FieldBinding {
public:
    FieldBinding() = default;
    FieldBinding(const FieldBinding&) = delete;
    FieldBinding& operator=(const FieldBinding&) = delete;
    virtual ~FieldBinding() = default;

    virtual Value get() const = 0;
    virtual void set(const Value& value) = 0;
};

using NumberBinding = FieldBinding<std::int32_t>;
using TextBinding = FieldBinding<std::string>;
using TimeBinding = FieldBinding<base::TimeValue>;

/// 32-bit numbers and enumerations. Unsigned values keep their bits.
template<class Field>
concept NumberField = sizeof(Field) == sizeof(std::int32_t) &&
                      (std::integral<Field> || std::is_enum_v<Field>);

template<class Field>
concept FlagField = std::same_as<Field, bool> || std::same_as<Field, std::uint8_t>;

template<NumberField Field>
class NumberFieldBinding final : public NumberBinding {
public:
    explicit NumberFieldBinding(Field& field) : field_(&field) {}
    std::int32_t get() const override { return static_cast<std::int32_t>(*field_); }
    void set(const std::int32_t& value) override { *field_ = static_cast<Field>(value); }

private:
    Field* field_;
};

/// Any value except 0 sets the flag, so a radio group can be bound to a flag.
template<FlagField Field>
class FlagBinding final : public NumberBinding {
public:
    explicit FlagBinding(Field& field) : field_(&field) {}
    std::int32_t get() const override { return *field_; }
    void set(const std::int32_t& value) override { *field_ = value != 0 ? Field{1} : Field{0}; }

private:
    Field* field_;
};

template<NumberField Field>
[[nodiscard]] std::unique_ptr<NumberBinding> bindNumber(Field& field) {
    return std::make_unique<NumberFieldBinding<Field>>(field);
}

template<FlagField Field>
[[nodiscard]] std::unique_ptr<NumberBinding> bindFlag(Field& field) {
    return std::make_unique<FlagBinding<Field>>(field);
}

[[nodiscard]] std::unique_ptr<TextBinding> bindText(std::string& field);

/// For TimeOfDayEdit, which does its own conversion.
[[nodiscard]] std::unique_ptr<TimeBinding> bindTimeOfDay(base::TimeValue& field);

/// For DateTimeEdit. Stores 0 if the text is not a date.
[[nodiscard]] std::unique_ptr<TextBinding> bindDateTime(base::TimeValue& field);

} // namespace framework
