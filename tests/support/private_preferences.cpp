// Linked into every test program. It keeps the program's preferences in a private folder.
#include <filesystem>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "tests/support/temporary_folder.h"

namespace halvane::testing {

namespace {

class PrivatePreferences : public ::testing::Environment {
  public:
    PrivatePreferences() { ::setenv("XDG_CONFIG_HOME", folder_.path().c_str(), 1); }

  private:
    TemporaryFolder folder_;
};

[[maybe_unused]] const auto* const environment =
    ::testing::AddGlobalTestEnvironment(new PrivatePreferences);

}  // namespace

}  // namespace halvane::testing
