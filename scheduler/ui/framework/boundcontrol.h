// A control that shows one value and can be bound to a record's field.
#pragma once

#include "scheduler/ui/framework/control.h"
#include "scheduler/ui/framework/fieldbinding.h"

#include <memory>
#include <utility>

namespace framework {

template<class Value, class Base = Control>
class BoundControl : public Base {
public:
    using Binding = std::unique_ptr<FieldBinding<Value>>;

    /// `binding` may be null. The other arguments go to `Base`.
    template<class... Arguments>
    explicit BoundControl(Binding binding, Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...), binding_(std::move(binding)) {}

    void bind(Binding binding) { binding_ = std::move(binding); }

    virtual Value value() const = 0;
    virtual void setValue(const Value& value) = 0;

    void load() override {
        if (binding_)
            setValue(binding_->get());
    }

    void store() override {
        if (binding_)
            binding_->set(value());
    }

private:
    Binding binding_;
};

} // namespace framework
