// The start of every test program.

#include <gmock/gmock.h>

#include <iostream>

int main(int argc, char* argv[]) {
    testing::InitGoogleMock(&argc, argv);
    const int result = RUN_ALL_TESTS();
    if (testing::UnitTest::GetInstance()->test_to_run_count() > 0)
        return result;
    std::cerr << "no test matches the filter " << testing::GTEST_FLAG(filter) << '\n';
    return 1;
}
