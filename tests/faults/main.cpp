#include "faults/MountedDisk.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    orvalen::test::canMount(); // needs a process with one thread
    return RUN_ALL_TESTS();
}
