// Runs the tests of one program.
#include <gtest/gtest.h>

int main(int nArguments, char** aArguments)
{
    testing::InitGoogleTest(&nArguments, aArguments);
    return RUN_ALL_TESTS();
}
