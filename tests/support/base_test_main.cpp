#include "test_environment.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const TEST_ENVIRONMENT environment;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
