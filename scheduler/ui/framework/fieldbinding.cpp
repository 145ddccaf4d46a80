#include "scheduler/ui/framework/fieldbinding.h"

#include "scheduler/ui/framework/datetext.h"

namespace framework {
namespace {

/// Leaves the value unconverted.
template<class Field>
class PlainBinding final : public FieldBinding<Field> {
public:
    explicit PlainBinding(Field& field) : field_(&field) {}
    Field get() const override { return *field_; }
    void set(const Field& value) override { *field_ = value; }

private:
    Field* field_;
};

class DateTimeBinding final : public TextBinding {
public:
    explicit DateTimeBinding(base::TimeValue& field) : field_(&field) {}
    std::string get() const override { return dateTimeText(*field_); }
    void set(const std::string& value) override { *field_ = dateTimeFromText(value); }

private:
    base::TimeValue* field_;
};

} // namespace

std::unique_ptr<TextBinding> bindText(std::string& field) {
    return std::make_unique<PlainBinding<std::string>>(field);
}

std::unique_ptr<TimeBinding> bindTimeOfDay(base::TimeValue& field) {
    return std::make_unique<PlainBinding<base::TimeValue>>(field);
}

std::unique_ptr<TextBinding> bindDateTime(base::TimeValue& field) {
    return std::make_unique<DateTimeBinding>(field);
}

} // namespace framework
