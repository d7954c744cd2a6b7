// Every test starts with the program as it was before main.
#include <gtest/gtest.h>

#include "support/desk.h"

struct FreshProgram : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo &) override { resetProgram(); }
};

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    reportMisuse = [](const std::string &what) { ADD_FAILURE() << what; };
    beginDesks();
    testing::UnitTest::GetInstance()->listeners().Append(new FreshProgram);
    return RUN_ALL_TESTS();
}
