// A crash must be seen: under Wine a crashed program can end with 0.
#include <gtest/gtest.h>

#include "shell/base/windows_api.h"

static LONG WINAPI endRed(EXCEPTION_POINTERS *)
{
    TerminateProcess(GetCurrentProcess(), 70);
    return 0;
}

int main(int argc, char **argv)
{
    SetUnhandledExceptionFilter(endRed);
    testing::InitGoogleTest(&argc, argv);
    GdiplusStartupInput input;
    ULONG_PTR token = 0;
    GdiplusStartup(&token, &input, nullptr);
    return RUN_ALL_TESTS();
}
