// Every test starts with the program as it was before main.
#include <gtest/gtest.h>

#include "support/desk.h"
#include "support/recorded.h"

struct FreshProgram : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo &) override { resetProgram(); }
};

struct Records : testing::Environment {
    void TearDown() override
    {
        const testing::UnitTest &run = *testing::UnitTest::GetInstance();
        const bool whole = run.test_to_run_count() == run.total_test_count();
        EXPECT_EQ(finishRecords(whole), "") << "recorded, but no test asks for it";
    }
};

int main(int argc, char **argv)
{
    // A crash must be seen: under Wine a crashed program can end with 0.
    SetUnhandledExceptionFilter([](EXCEPTION_POINTERS *) -> LONG {
        TerminateProcess(GetCurrentProcess(), 70);
        return 0;
    });
    testing::InitGoogleTest(&argc, argv);
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    reportMisuse = [](const std::string &what) { ADD_FAILURE() << what; };
    keepProgramState();
    testing::UnitTest::GetInstance()->listeners().Append(new FreshProgram);
    testing::AddGlobalTestEnvironment(new Records);
    return RUN_ALL_TESTS();
}
