#pragma once

#include "scheduler/run/usermessages.h"

#include <gmock/gmock.h>

namespace test {

class MockUserMessages : public scheduler::UserMessages {
public:
    MOCK_METHOD(void, showError, (const std::string& text), (override));
    MOCK_METHOD(void, showNotice, (const std::string& text), (override));
};

} // namespace test
