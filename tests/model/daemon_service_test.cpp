#include "halvane/model/daemon_service.h"

#include <gtest/gtest.h>

using namespace halvane;

namespace {

TEST(DaemonService, NamesFollowFromTheServiceName) {
    EXPECT_STREQ(kDaemonServiceName, "org.halvane.halvaned");
    EXPECT_STREQ(kDaemonErrorDomain, "org.halvane.halvaned.ErrorDomain");
}

TEST(DaemonService, ErrorsAreOfItsDomain) {
    EXPECT_EQ(daemonError(-6705), (Error{"org.halvane.halvaned.ErrorDomain", -6705}));
}

}  // namespace
