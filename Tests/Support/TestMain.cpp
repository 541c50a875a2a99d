#include "TestMain.h"

#include <cstdio>

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    if(OSG::Test::before_all_tests != nullptr && !OSG::Test::before_all_tests())
    {
        std::fputs("the system did not start\n", stderr);
        return 1;
    }
    int const result = RUN_ALL_TESTS();
    if(OSG::Test::after_all_tests != nullptr)
        OSG::Test::after_all_tests();
    return result;
}
