// What replies come to, without a daemon.
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/result.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"

#include "tests/daemon/xpc_client_test_support.h"
#include "tests/model/test_support.h"
#include "tests/support/scoped_environment.h"

namespace {

using namespace halvane;
using namespace halvane::testing;

const Error kBefore = daemonError(77);

ServiceReply errorReply(ServiceError::Kind kind) {
    return Unexpected(ServiceError{kind, "text"});
}

constexpr ServiceError::Kind kErrorKinds[] = {
    ServiceError::Kind::Invalid, ServiceError::Kind::Interrupted, ServiceError::Kind::Other};

// A status as it arrives, and the 32 bits that count.
struct StatusRow {
    PropertyListValue arrived;
    std::int32_t status;
    const char* why;
};

const StatusRow kStatusRows[] = {
    {0, 0, "success"},
    {5, 5, "a code"},
    {-6705, -6705, "a negative code"},
    {std::numeric_limits<std::int32_t>::max(), 2147483647, "the greatest code"},
    {std::numeric_limits<std::int32_t>::min(), -2147483647 - 1, "the least code"},
    {std::int64_t{0x80000000}, -2147483647 - 1, "one above the greatest"},
    {std::int64_t{0x100000000}, 0, "nothing in the lowest 32 bits"},
    {std::int64_t{0x100000003}, 3, "bits above the lowest 32"},
    {std::numeric_limits<std::int64_t>::min(), 0, "the least number"},
    {std::numeric_limits<std::int64_t>::max(), -1, "the greatest number"},
    {std::uint64_t{7}, 7, "unsigned, but the same number"},
    {std::numeric_limits<std::uint64_t>::max(), 0, "no 64-bit signed number: as if missing"},
    {7.0, 0, "a real number: as if missing"},
    {true, 0, "a boolean: as if missing"},
    {"7", 0, "a string: as if missing"},
    {ByteBuffer{7}, 0, "data: as if missing"},
    {PropertyListArray{7}, 0, "an array: as if missing"},
    {PropertyListDictionary(), 0, "a dictionary: as if missing"},
};

// --- Lists ---

template <typename List>
class XPCListReply : public ::testing::Test {
  protected:
    using Records = std::vector<typename List::Record>;

    // Parses with a place for an error that holds one already.
    Records parse(const ServiceReply& reply) {
        error_ = kBefore;
        return List::kParse(reply, &error_);
    }

    std::optional<Error> error_;
};

TYPED_TEST_SUITE(XPCListReply, HALVANE_TEST_LISTS);

TYPED_TEST(XPCListReply, HoldsRecordsInOrder) {
    EXPECT_EQ(this->parse(listReply<TypeParam>()), TypeParam::records());
    EXPECT_EQ(this->error_, kBefore);
}

TYPED_TEST(XPCListReply, NeedsNoPlaceForAnError) {
    EXPECT_EQ(TypeParam::kParse(listReply<TypeParam>(), nullptr), TypeParam::records());
    EXPECT_TRUE(TypeParam::kParse(ipcMessage({{"status", 5}}), nullptr).empty());
    EXPECT_TRUE(TypeParam::kParse(errorReply(ServiceError::Kind::Invalid), nullptr).empty());
}

TYPED_TEST(XPCListReply, OfAnErrorIsEmptyWithItsCode) {
    for (const auto kind : kErrorKinds) {
        EXPECT_TRUE(this->parse(errorReply(kind)).empty());
        EXPECT_EQ(this->error_, (Error{"org.halvane.halvaned.ErrorDomain", -6700}));
    }
}

TYPED_TEST(XPCListReply, TakesTheStatusAsTheCode) {
    for (const StatusRow& row : kStatusRows) {
        const auto records = this->parse(
            ipcMessage({{"status", row.arrived}, {TypeParam::kKey, dataOf<TypeParam>()}}));
        if (row.status == 0) {
            EXPECT_EQ(records, TypeParam::records()) << row.why;
            EXPECT_EQ(this->error_, kBefore) << row.why;
        } else {
            EXPECT_TRUE(records.empty()) << row.why;
            EXPECT_EQ(this->error_, (Error{"org.halvane.halvaned.ErrorDomain", row.status}))
                << row.why;
        }
    }
}

TYPED_TEST(XPCListReply, WithoutAStatusIsASuccess) {
    EXPECT_EQ(this->parse(ipcMessage({{TypeParam::kKey, dataOf<TypeParam>()}})),
              TypeParam::records());
    EXPECT_EQ(this->error_, kBefore);
}

TYPED_TEST(XPCListReply, WithoutItsKeyIsEmptyWithoutAnError) {
    EXPECT_TRUE(this->parse(ipcMessage({{"status", 0}})).empty());
    EXPECT_TRUE(this->parse(IPCMessage()).empty());
    EXPECT_TRUE(this->parse(ipcMessage({{"status", 0}, {"list", dataOf<TypeParam>()}})).empty());
    EXPECT_EQ(this->error_, kBefore);
}

TYPED_TEST(XPCListReply, OfAnotherTypeIsEmptyWithoutAnError) {
    for (const auto& value : valuesOfOtherKinds<ByteBuffer>()) {
        EXPECT_TRUE(this->parse(ipcMessage({{"status", 0}, {TypeParam::kKey, value}})).empty());
    }
    const auto array = skeleton::skeletonsOf(TypeParam::records());
    EXPECT_TRUE(this->parse(ipcMessage({{"status", 0}, {TypeParam::kKey, array}})).empty());
    EXPECT_EQ(this->error_, kBefore);
}

TYPED_TEST(XPCListReply, OfUndecodableDataIsEmptyWithoutAnError) {
    const ByteBuffer good = dataOf<TypeParam>();
    const ByteBuffer rows[] = {
        ByteBuffer(),
        ByteBuffer::fromText("no property list"),
        ByteBuffer::fromText("bplist00"),
        good.slice(0, good.size() / 2),
        good.slice(1),
        xmlData("a string"),
        xmlData(PropertyListDictionary()),
        xmlData(TypeParam::records()[0].skeletonRepresentation()),
    };
    for (const ByteBuffer& data : rows) {
        EXPECT_TRUE(this->parse(ipcMessage({{"status", 0}, {TypeParam::kKey, data}})).empty())
            << data.description();
        EXPECT_EQ(this->error_, kBefore);
    }
}

TYPED_TEST(XPCListReply, OfAnEmptyListIsEmptyWithoutAnError) {
    EXPECT_TRUE(
        this->parse(ipcMessage({{"status", 0}, {TypeParam::kKey, xmlData(PropertyListArray())}}))
            .empty());
    EXPECT_EQ(this->error_, kBefore);
}

TYPED_TEST(XPCListReply, PassesOverWhatIsNoDictionary) {
    PropertyListArray mixed = skeleton::skeletonsOf(TypeParam::records());
    mixed.insert(mixed.begin() + 1, {"text", 5, PropertyListArray(), ByteBuffer{1}});
    EXPECT_EQ(this->parse(ipcMessage({{"status", 0}, {TypeParam::kKey, xmlData(mixed)}})),
              TypeParam::records());
}

TEST(XPCInterfaceListReply, LeavesOutWhatMakesNoInterface) {
    PropertyListArray skeletons = skeleton::skeletonsOf(InterfaceList::records());
    skeletons.insert(skeletons.begin(), PropertyListDictionary());
    EXPECT_EQ(HalvaneXPCClient::queryInterfaceListResponse_error(
                  ipcMessage({{"status", 0}, {"interfaces", xmlData(skeletons)}})),
              InterfaceList::records());
}

TEST(XPCDeviceListReply, MakesDevicesOfEmptyDictionaries) {
    const auto devices = HalvaneXPCClient::queryDeviceListResponse_error(ipcMessage(
        {{"status", 0}, {"devices", xmlData(PropertyListArray{PropertyListDictionary()})}}));
    ASSERT_EQ(devices.size(), 1u);
    EXPECT_EQ(devices[0].MACAddress(), ByteBuffer());
}

// --- Verdicts ---

struct StatusParser {
    std::string name;
    bool (*parse)(const ServiceReply&);

    // In the names of tests.
    friend void PrintTo(const StatusParser& parser, std::ostream* stream) {
        *stream << parser.name;
    }
};

const StatusParser kStatusParsers[] = {
    {"bssConfigAdd", HalvaneXPCClient::bssConfigAddResponse},
    {"bssConfigRemove", HalvaneXPCClient::bssConfigRemoveResponse},
    {"enableInterface", HalvaneXPCClient::enableInterfaceResponse},
    {"disableInterface", HalvaneXPCClient::disableInterfaceResponse},
    {"changeInterfaceRole", HalvaneXPCClient::changeInterfaceRoleResponse},
    {"bssStart", HalvaneXPCClient::bssStartResponse},
    {"bssStop", HalvaneXPCClient::bssStopResponse},
    {"registerNotifications", HalvaneXPCClient::registerNotificationsResponse},
};

class XPCStatusReply : public ::testing::TestWithParam<StatusParser> {};

TEST_P(XPCStatusReply, IsTrueForStatus0Alone) {
    for (const StatusRow& row : kStatusRows) {
        EXPECT_EQ(GetParam().parse(ipcMessage({{"status", row.arrived}})), row.status == 0)
            << row.why;
    }
    EXPECT_TRUE(GetParam().parse(IPCMessage())) << "a missing status is 0";
}

TEST_P(XPCStatusReply, IsFalseForAnError) {
    for (const auto kind : kErrorKinds) EXPECT_FALSE(GetParam().parse(errorReply(kind)));
}

INSTANTIATE_TEST_SUITE_P(AllParsers, XPCStatusReply, ::testing::ValuesIn(kStatusParsers),
                         [](const auto& row) { return row.param.name; });

// --- Logging ---

TEST(XPCSetLoggingReply, TakesTheStatusAsTheCode) {
    for (const StatusRow& row : kStatusRows) {
        const ServiceReply reply = ipcMessage({{"status", row.arrived}});
        std::optional<Error> error = kBefore;
        EXPECT_EQ(HalvaneXPCClient::setLoggingResponse_error(reply, &error), row.status == 0);
        const auto expected =
            row.status == 0 ? kBefore : Error{"org.halvane.halvaned.ErrorDomain", row.status};
        EXPECT_EQ(error, expected) << row.why;
        EXPECT_EQ(HalvaneXPCClient::setLoggingResponse_error(reply), row.status == 0) << row.why;
    }
}

TEST(XPCSetLoggingReply, OfAnErrorIsFalseWithoutAnError) {
    for (const auto kind : kErrorKinds) {
        std::optional<Error> error;
        EXPECT_FALSE(HalvaneXPCClient::setLoggingResponse_error(errorReply(kind), &error));
        EXPECT_EQ(error, std::nullopt);
    }
}

TEST(XPCQueryLoggingReply, IsTheParamsWhateverTheStatus) {
    EXPECT_EQ(HalvaneXPCClient::queryLoggingResponse(ipcMessage({{"params", "WiFi: \xC3\xA9"}})),
              "WiFi: \xC3\xA9");
    EXPECT_EQ(
        HalvaneXPCClient::queryLoggingResponse(ipcMessage({{"status", 5}, {"params", "text"}})),
        "text");
    EXPECT_EQ(HalvaneXPCClient::queryLoggingResponse(ipcMessage({{"params", ""}})), "");
}

TEST(XPCQueryLoggingReply, IsAbsentWithoutParams) {
    EXPECT_EQ(HalvaneXPCClient::queryLoggingResponse(IPCMessage()), std::nullopt);
    EXPECT_EQ(HalvaneXPCClient::queryLoggingResponse(ipcMessage({{"status", 0}})), std::nullopt);
    for (const auto& value : valuesOfOtherKinds<std::string>()) {
        EXPECT_EQ(HalvaneXPCClient::queryLoggingResponse(ipcMessage({{"params", value}})),
                  std::nullopt);
    }
    for (const auto kind : kErrorKinds) {
        EXPECT_EQ(HalvaneXPCClient::queryLoggingResponse(errorReply(kind)), std::nullopt);
    }
}

}  // namespace
