// main() of every test program that needs a world of its own: the namespaces must be entered before a thread
// exists.
#include <gmock/gmock.h>

#include <exception>
#include <iostream>

#include "Tools/boardsim/Host/Mounts.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (!GTEST_FLAG_GET(list_tests)) {
        try {
            boardsim::enterPrivateMounts();
        } catch (const std::exception& error) {
            std::cerr << error.what() << '\n';
            return EXIT_FAILURE;
        }
    }
    return RUN_ALL_TESTS();
}
