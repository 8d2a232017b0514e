// Expected texts in files. HALVANE_UPDATE_GOLDEN=1 in the environment updates the files.
#ifndef TESTS_SUPPORT_GOLDEN_FILE_H
#define TESTS_SUPPORT_GOLDEN_FILE_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "tests/support/run_program.h"

namespace halvane::testing {

inline void expectGolden(const std::string& text, const std::filesystem::path& path) {
    if (std::getenv("HALVANE_UPDATE_GOLDEN") != nullptr) {
        std::ofstream(path, std::ios::binary) << text;
    }
    EXPECT_FALSE(text.empty()) << path;
    EXPECT_EQ(text, contentsOf(path)) << path;
}

}  // namespace halvane::testing

#endif
