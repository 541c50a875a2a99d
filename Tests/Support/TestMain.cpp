#include "TestMain.h"

#include <cstdio>

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    if(OSG::Test::beforeAllTests != nullptr && !OSG::Test::beforeAllTests())
    {
        std::fputs("the system did not start\n", stderr);
        return 1;
    }
    int const result = RUN_ALL_TESTS();
    if(OSG::Test::afterAllTests != nullptr)
        OSG::Test::afterAllTests();
    return result;
}
