// Every test starts with the program as it was before main.
#include <gtest/gtest.h>

#include "support/desk.h"

struct FreshProgram : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo &) override { resetProgram(); }
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
    return RUN_ALL_TESTS();
}
