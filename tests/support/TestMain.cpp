// Test entry: the host's global commands are installed once, as the shell does at start.

#include "HxGlobalCommands.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    HxGlobalCommands::install();
    return RUN_ALL_TESTS();
}
