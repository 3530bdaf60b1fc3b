// A main of its own for the sake of `--update`, which rewrites the expected files of the tables from what comes out.
#include <gtest/gtest.h>

#include <string_view>

#include "Volcado.h"

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    for (int i = 1; i < argc; ++i)
        if (std::string_view(argv[i]) == "--update") ondalis::ActualizaTablas() = true;
    return RUN_ALL_TESTS();
}
