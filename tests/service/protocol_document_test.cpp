// docs/protocol.md and docs/daemon.md say what the library has.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "halvane/model/daemon_protocol.h"
#include "halvane/model/daemon_status.h"
#include "halvane/service/daemon_limits.h"
#include "halvane/service/message_internal.h"

#include "tests/support/run_program.h"

namespace halvane {

namespace {

using ::halvane::testing::contentsOf;
using ::testing::HasSubstr;

const std::filesystem::path kRoot = HALVANE_ROOT;

TEST(ProtocolDocument, NamesCommandsKeysAndLogCategories) {
    using namespace protocol;
    const std::string document = contentsOf(kRoot / "docs/protocol.md");
    for (const char* name :
         {command::kDevices, command::kInterfaces, command::kChannels, command::kConfigurations,
          command::kStations, command::kAdd, command::kRemove, command::kEnable, command::kDisable,
          command::kRole, command::kStart, command::kStop, command::kKick, command::kSetLogging,
          command::kLogging, command::kSubscribe}) {
        EXPECT_THAT(document, HasSubstr(std::string("| `") + name + "` |"));
    }
    for (const char* name :
         {key::kCommand, key::kInterface, key::kRole, key::kConfiguration, key::kWantsNotifications,
          key::kStatus, key::kDevices, key::kInterfaces, key::kChannels, key::kConfigurations,
          key::kStations, key::kLogging, key::kStationInterface, key::kStationAddress}) {
        EXPECT_THAT(document, HasSubstr(std::string("`") + name + '`'));
    }
    for (const auto name : kLogCategories) {
        EXPECT_THAT(document, HasSubstr('`' + std::string(name) + '`'));
    }
}

TEST(ProtocolDocument, ListsEveryStatus) {
    const std::string document = contentsOf(kRoot / "docs/protocol.md");
    for (std::int64_t status = 0; status < kFirstOwnStatus; ++status) {
        const bool isKnown = !textOf(static_cast<DaemonStatus>(status)).empty();
        const auto row = document.find("\n| " + std::to_string(status) + " | ");
        EXPECT_EQ(row != std::string::npos, isKnown) << status;
    }
    EXPECT_THAT(document, HasSubstr("\n| " + std::to_string(kFirstOwnStatus) + " and above |"));
}

// "1,024"
std::string withCommas(std::size_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, ",");
    return text;
}

TEST(DaemonDocument, StatesTheLimits) {
    const std::string document = contentsOf(kRoot / "docs/daemon.md");
    const DaemonLimits limits;
    EXPECT_THAT(document, HasSubstr("`DaemonLimits::subscribers`) | " +
                                    withCommas(limits.subscribers) + " |"));
    EXPECT_THAT(document, HasSubstr("`waitingOfOne`) | " + withCommas(limits.waitingOfOne) + " |"));
    EXPECT_THAT(document, HasSubstr("`waiting`) | " + withCommas(limits.waiting) + " |"));
    EXPECT_THAT(document, HasSubstr(withCommas(kLargestDaemonReply) + " bytes"));
}

}  // namespace

}  // namespace halvane
