// The radios of this machine, as nl80211 tells them and their changes.
//
// A kernel without nl80211 has no radios. If it gets nl80211 later, with the driver of a new radio
// for example, the radios come. Only one thread at a time may use an object.
#ifndef TOOLS_HALVANED_RADIO_RADIO_DEVICES_H
#define TOOLS_HALVANED_RADIO_RADIO_DEVICES_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/platform/os/file_internal.h"

#include "tools/halvane/input/netlink_attributes.h"
#include "tools/halvane/input/nl80211_channel.h"
#include "tools/halvaned/radio/device_list.h"
#include "tools/halvaned/radio/device_source.h"
#include "tools/halvaned/radio/link_events.h"
#include "tools/halvaned/radio/radio_event.h"
#include "tools/halvaned/radio/system_files.h"

namespace halvane::hosting {

class RadioDevices : public DeviceSource {
  public:
    using OpenChannel = std::function<tool::Nl80211Channel::Opened()>;

    // `only` names the interfaces that count. If it is empty, all do.
    explicit RadioDevices(
        LinkEvents links, std::vector<std::string> only = {},
        OpenChannel open = [] { return tool::Nl80211Channel::open(); },
        SystemFiles files = SystemFiles());

    Result<DeviceUpdate, std::string> start() override;
    int descriptor() const override { return poll_.number(); }
    DeviceUpdate update() override;
    const DeviceList& devices() const override { return list_; }
    bool isAvailable() const override { return channel_ != nullptr; }
    std::string_view subsystem() const override { return "nl80211"; }

  private:
    using Messages = std::vector<tool::Nl80211Channel::Message>;

    // Parts of the list that have to be read again.
    struct Stale {
        bool radios = false;
        bool interfaces = false;
        bool domains = false;
    };
    static constexpr Stale kAll = {true, true, true};

    // Opens the channel, and asks for events before anything is read. A kernel without nl80211
    // gives none, and no fault.
    std::optional<std::string> connect();
    bool watch(int descriptor) const;
    void takeEvents(std::vector<std::string>& faults);
    void note(const RadioEvent& event);

    void readStale(std::vector<std::string>& faults);
    bool readRadios(std::vector<std::string>& faults);
    bool readInterfaces(std::vector<std::string>& faults);
    bool readDomains(std::vector<std::string>& faults);
    // The answer to a question for a list. Absent, with a fault, if there is none.
    std::optional<Messages> ask(std::uint8_t command, const tool::NetlinkAttributeList& attributes,
                                std::vector<std::string>& faults);
    // nl80211 is gone, and its radios with it.
    void disconnect();

    LinkEvents links_;
    const std::vector<std::string> only_;
    const OpenChannel open_;
    const SystemFiles files_;
    FileDescriptor poll_;  // of both kinds of events
    std::unique_ptr<tool::Nl80211Channel> channel_;
    Stale stale_;
    DeviceList list_;
};

}  // namespace halvane::hosting

#endif
