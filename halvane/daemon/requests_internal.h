// The requests of the daemon's protocol: what each one sends, and how its reply is read.
#ifndef HALVANE_DAEMON_REQUESTS_INTERNAL_H
#define HALVANE_DAEMON_REQUESTS_INTERNAL_H

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/daemon/message_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_list_key_internal.h"
#include "halvane/model/daemon_log_controls.h"
#include "halvane/model/daemon_value_internal.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/regulatory/channel.h"

namespace halvane {

template <typename T>
struct DaemonRequest {
    IPCMessage message;

    // Converts a reply to the result. It may throw std::bad_alloc, and nothing else.
    DaemonResult<T> (*read)(const IPCMessage& reply);
};

// Returns the records in a reply, without items that make no record; absent if it holds no list.
template <typename Record>
std::optional<std::vector<Record>> recordsIn(const IPCMessage& reply) {
    const auto* data = daemonValue<ByteBuffer>(reply, kDaemonListKey<Record>);
    if (data == nullptr) return std::nullopt;
    const auto bytes = data->bytes();
    auto list = propertyListFromXml({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    auto* skeletons = list ? list->template as<PropertyListArray>() : nullptr;
    if (skeletons == nullptr) return std::nullopt;
    return skeleton::recordsOf<Record>(std::move(*skeletons));
}

namespace requests {

DaemonRequest<std::vector<HalvaneDevice>> devices();
DaemonRequest<std::vector<HalvaneInterface>> interfaces();
DaemonRequest<std::vector<HalvaneChannel>> channels(std::string_view interface);
DaemonRequest<std::vector<HalvaneBSSConfig>> configurations(
    std::optional<std::string_view> interface);
DaemonRequest<std::vector<HalvaneClient>> stations();

// If the configuration has no XML form, the message cannot be sent.
DaemonRequest<void> add(std::string_view interface, const HalvaneBSSConfig& configuration);
DaemonRequest<void> remove(std::string_view interface, const HalvaneBSSConfig& configuration);

DaemonRequest<void> enable(std::string_view interface);
DaemonRequest<void> disable(std::string_view interface);
DaemonRequest<void> role(std::string_view interface, std::string_view role);
DaemonRequest<void> start(std::string_view interface);
DaemonRequest<void> stop(std::string_view interface);
DaemonRequest<void> kick(std::string_view interface, const MacAddress& station);
DaemonRequest<void> subscribe(bool isWanted);
DaemonRequest<void> setLogging(const DaemonLogControls& controls);
DaemonRequest<std::string> logging();

}  // namespace requests

}  // namespace halvane

#endif
