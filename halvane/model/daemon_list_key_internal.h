// The key in a reply under which each kind of record is listed.
#ifndef HALVANE_MODEL_DAEMON_LIST_KEY_INTERNAL_H
#define HALVANE_MODEL_DAEMON_LIST_KEY_INTERNAL_H

#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

namespace halvane {

template <typename Record>
inline constexpr const char* kDaemonListKey = nullptr;
template <>
inline constexpr const char* kDaemonListKey<HalvaneDevice> = protocol::key::kDevices;
template <>
inline constexpr const char* kDaemonListKey<HalvaneInterface> = protocol::key::kInterfaces;
template <>
inline constexpr const char* kDaemonListKey<HalvaneChannel> = protocol::key::kChannels;
template <>
inline constexpr const char* kDaemonListKey<HalvaneBSSConfig> = protocol::key::kConfigurations;
template <>
inline constexpr const char* kDaemonListKey<HalvaneClient> = protocol::key::kStations;

}  // namespace halvane

#endif
