// What tests of the daemon's client share: messages, replies, and records as the daemon sends them.
#ifndef TESTS_DAEMON_XPC_CLIENT_TEST_SUPPORT_H
#define TESTS_DAEMON_XPC_CLIENT_TEST_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/regulatory/channel.h"
#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"

#include "tests/support/bus_peer.h"
#include "tests/support/private_bus.h"
#include "tests/support/service_client.h"

namespace halvane::testing {

inline const ByteBuffer kStation = {0x02, 0x00, 0x00, 0x00, 0x01, 0x2A};

// The property list as a message carries it.
inline ByteBuffer xmlData(const PropertyListValue& value) {
    return ByteBuffer::fromText(xmlPropertyList(value).value_or("no XML"));
}

inline HalvaneInterface interfaceNamed(const std::string& name) {
    auto skeleton = HalvaneInterface::initWithDevice_withMAC_withBSDName(
                        std::make_shared<HalvaneDevice>(
                            HalvaneDevice::initWithMACAddress_withIndex(kStation, 3)),
                        kStation, name)
                        .skeletonRepresentation();
    skeleton.set("Role", "AP");
    skeleton.set("Subsystem", "nl80211");
    return *HalvaneInterface::initWithSkeletonRepresentation(skeleton);
}

inline HalvaneBSSConfig configNamed(const std::string& name) {
    auto config = HalvaneBSSConfig::init();
    config.setWpsDeviceName(name);
    return config;
}

// The five lists: how each is asked for and read, and two records that are not alike.
struct DeviceList {
    using Record = HalvaneDevice;
    static constexpr const char* kCommand = "queryDeviceList";
    static constexpr const char* kKey = "devices";
    static constexpr auto kParse = HalvaneXPCClient::queryDeviceListResponse_error;
    static auto query(HalvaneXPCClient& client, std::optional<Error>* error) {
        return client.queryDeviceList(error);
    }
    static std::vector<Record> records() {
        return {Record::initWithMACAddress_withIndex(kStation, 1),
                Record::initWithMACAddress_withIndex(kStation, 0)};
    }
};

struct InterfaceList {
    using Record = HalvaneInterface;
    static constexpr const char* kCommand = "queryInterfaceList";
    static constexpr const char* kKey = "interfaces";
    static constexpr auto kParse = HalvaneXPCClient::queryInterfaceListResponse_error;
    static auto query(HalvaneXPCClient& client, std::optional<Error>* error) {
        return client.queryInterfaceList(error);
    }
    static std::vector<Record> records() {
        return {interfaceNamed("wlan1"), interfaceNamed("wlan0")};
    }
};

struct ChannelList {
    using Record = HalvaneChannel;
    static constexpr const char* kCommand = "queryChannelList";
    static constexpr const char* kKey = "channels";
    static constexpr auto kParse = HalvaneXPCClient::queryChannelListResponse_error;
    static auto query(HalvaneXPCClient& client, std::optional<Error>* error) {
        return client.queryChannelList_error("wlan0", error);
    }
    static std::vector<Record> records() {
        return {Record::initWithChannel_withFrequency_isRadarProne(52, 5260, true),
                Record::initWithChannel_withFrequency_isRadarProne(1, 2412, false)};
    }
};

struct BSSConfigList {
    using Record = HalvaneBSSConfig;
    static constexpr const char* kCommand = "queryBSSConfigList";
    static constexpr const char* kKey = "configs";
    static constexpr auto kParse = HalvaneXPCClient::queryBSSConfigListResponse_error;
    static auto query(HalvaneXPCClient& client, std::optional<Error>* error) {
        return client.queryBSSConfigList_error("wlan0", error);
    }
    static std::vector<Record> records() { return {configNamed("b"), configNamed("a")}; }
};

struct ClientList {
    using Record = HalvaneClient;
    static constexpr const char* kCommand = "clientList";
    static constexpr const char* kKey = "clients";
    static constexpr auto kParse = HalvaneXPCClient::queryClientListResponse_error;
    static auto query(HalvaneXPCClient& client, std::optional<Error>* error) {
        return client.queryClientList_error("wlan0", error);
    }
    static std::vector<Record> records() {
        std::vector<Record> records;
        for (const std::uint64_t reason : {8u, 4u}) {
            PropertyListDictionary skeleton;
            skeleton.set("MAC", kStation);
            skeleton.set("isAssociated", reason == 4);
            skeleton.set("deauthReason", reason);
            records.push_back(Record::initWithSkeletonRepresentation(skeleton));
        }
        return records;
    }
};

#define HALVANE_TEST_LISTS \
    ::testing::Types<DeviceList, InterfaceList, ChannelList, BSSConfigList, ClientList>

// The data of a list of all its records.
template <typename List>
ByteBuffer dataOf() {
    return xmlData(skeleton::skeletonsOf(List::records()));
}

// A reply of success that holds them.
template <typename List>
IPCMessage listReply() {
    return ipcMessage({{"status", 0}, {List::kKey, dataOf<List>()}});
}

// A notification as the daemon sends it; `event` is the last word of its name.
inline IPCMessage notification(const std::string& event, const ByteBuffer& mac = kStation,
                               const std::string& interfaceName = "wlan0") {
    return ipcMessage({{"command", "org.halvane.halvaned.status.client." + event},
                       {"BSDName", interfaceName},
                       {"MAC", mac}});
}

// Keeps what a delegate is called with: "joined 02:00:00:00:01:2A wlan0".
class DelegateRecorder : public Arrivals<std::string> {
  public:
    // A delegate of all four calls.
    std::shared_ptr<HalvaneXPCClientDelegate> delegate() {
        return std::make_shared<HalvaneXPCClientDelegate>(HalvaneXPCClientDelegate{
            call("authorized"), call("joined"), call("kicked"), call("left")});
    }

    HalvaneXPCClientDelegate::Call call(const std::string& name) {
        return [this, name](const ByteBuffer& mac, const std::string& interfaceName) {
            add(name + " " + FancyFormatting::formattedMAC(mac) + " " + interfaceName);
        };
    }
};

// Records the client's log messages while it lives, as "[,function@level] text".
class XPCLog {
  public:
    explicit XPCLog(const std::string& level = "error") {
        LogUtils_Finalize();
        LogIsEnabled(&gLogCategory_WiFiXPC, kLogLevelMax);
        char output[100];
        SNPrintF(output, sizeof(output), "callback;func=%p;arg=%p",
                 reinterpret_cast<const void*>(&XPCLog::record), this);
        for (const auto& setting : {"level=" + level, std::string("flags=function;level"),
                                    std::string("output=") + output}) {
            LogControl(("^WiFiXPC$:" + setting).c_str());
        }
    }
    XPCLog(const XPCLog&) = delete;
    XPCLog& operator=(const XPCLog&) = delete;
    ~XPCLog() { LogUtils_Finalize(); }

    // What was not yet taken.
    std::string take() {
        std::string text;
        const auto pieces = pieces_.all();
        for (; taken_ < pieces.size(); ++taken_) text += pieces[taken_].text;
        return text;
    }

    // Waits for a message that ends so.
    void waitFor(const std::string& end) {
        std::size_t index = 0;
        while (!pieces_.wait(index).text.ends_with(end)) ++index;
    }

    // As the client gave it, of the last message.
    std::string lastFunction() const { return pieces_.all().back().function; }

  private:
    struct Piece {
        std::string function;
        std::string text;
    };

    static void record(const LogMessage* message, const char* text, std::size_t length, void* arg) {
        static_cast<XPCLog*>(arg)->pieces_.add({message->function, std::string(text, length)});
    }

    Arrivals<Piece> pieces_;
    std::size_t taken_ = 0;
};

// A client on a private bus, with a daemon that replies {"status": 0}.
class XPCClientTest : public ::testing::Test {
  protected:
    // Calls `run` on another thread.
    template <typename Run>
    static auto inBackground(Run run) {
        return std::async(std::launch::async, std::move(run));
    }

    // The client's name on the bus. The client receives its events from now on, because a request
    // was made.
    std::string clientName() {
        const std::size_t before = daemon_->requests().size();
        client_->queryLogging();
        return daemon_->waitForRequest(before).sender;
    }

    // The one request that `act` makes of the daemon.
    template <typename Act>
    ReceivedRequest requestOf(Act act) {
        const std::size_t before = daemon_->requests().size();
        act();
        const auto requests = daemon_->requests();
        EXPECT_EQ(requests.size(), before + 1);
        return requests.size() > before ? requests[before] : ReceivedRequest();
    }

    void restartDaemon() { daemon_.emplace(bus_); }

    XPCLog log_;
    PrivateBus bus_;
    std::optional<BusPeer> daemon_{std::in_place, bus_};
    DelegateRecorder stations_;
    std::unique_ptr<HalvaneXPCClient> client_ = HalvaneXPCClient::init();
};

inline const Error kNoReply = {"org.halvane.halvaned.ErrorDomain", -6700};

}  // namespace halvane::testing

#endif
