#include "tools/halvaned/radio/radio_devices.h"

#include <algorithm>
#include <cerrno>
#include <linux/nl80211.h>
#include <span>
#include <sys/epoll.h>
#include <system_error>
#include <utility>

#include "tools/halvane/input/nl80211_message.h"
#include "tools/halvaned/radio/device_change.h"
#include "tools/halvaned/radio/radio.h"
#include "tools/halvaned/radio/radio_interface.h"
#include "tools/halvaned/radio/radio_message.h"
#include "tools/halvaned/radio/regulatory_domain.h"

namespace halvane::hosting {

namespace {

using FaultKind = tool::Nl80211Fault::Kind;

constexpr int kMostQuestions = 3;

std::string textOf(const tool::Nl80211Fault& fault) {
    switch (fault.kind) {
        case FaultKind::NoFamily:
            return "the kernel has no nl80211";
        case FaultKind::Refused:
            return "nl80211 refuses: " + std::generic_category().message(fault.error);
        case FaultKind::Lost:
            return "nl80211 does not answer: " + fault.text;
    }
    return {};
}

std::string systemFault(const char* what) {
    return std::string(what) + ": " + std::generic_category().message(errno);
}

// Reads each message. One that cannot be read tells nothing, and its fault is noted.
template <typename Told, typename Messages>
std::vector<Told> readAll(const Messages& messages,
                          tool::ToldBy<Told> (*read)(std::span<const std::uint8_t>),
                          std::vector<std::string>& faults) {
    std::vector<Told> all;
    for (const auto& message : messages) {
        auto told = read(message);
        if (!told) {
            faults.push_back("a message of nl80211 cannot be read: " + told.error());
        } else if (*told) {
            all.push_back(std::move(**told));
        }
    }
    return all;
}

}  // namespace

RadioDevices::RadioDevices(LinkEvents links, std::vector<std::string> only, OpenChannel open,
                           SystemFiles files)
    : links_(std::move(links)),
      only_(std::move(only)),
      open_(std::move(open)),
      files_(std::move(files)) {}

Result<DeviceUpdate, std::string> RadioDevices::start() {
    poll_ = FileDescriptor(::epoll_create1(EPOLL_CLOEXEC));
    if (!poll_ || !watch(links_.descriptor())) return Unexpected(systemFault("epoll"));
    if (auto fault = connect()) return Unexpected(std::move(*fault));
    DeviceUpdate update;
    readStale(update.faults);
    update.changes = changesBetween({}, list_);
    return update;
}

DeviceUpdate RadioDevices::update() {
    DeviceUpdate update;
    const DeviceList before = list_;
    const bool haveLinksChanged = links_.take();
    stale_.interfaces = stale_.interfaces || haveLinksChanged;
    if (channel_) {
        takeEvents(update.faults);
    } else if (haveLinksChanged) {
        if (auto fault = connect()) update.faults.push_back(std::move(*fault));
    }
    readStale(update.faults);
    update.changes = changesBetween(before, list_);
    return update;
}

std::optional<std::string> RadioDevices::connect() {
    auto channel = open_();
    if (!channel) {
        if (channel.error().kind != FaultKind::NoFamily) return textOf(channel.error());
        list_ = {};
        return std::nullopt;
    }
    for (const char* group : {NL80211_MULTICAST_GROUP_CONFIG, NL80211_MULTICAST_GROUP_REG}) {
        if (const auto fault = (*channel)->subscribe(group)) return textOf(*fault);
    }
    if (!watch((*channel)->eventDescriptor())) return systemFault("epoll");
    channel_ = std::move(*channel);
    stale_ = kAll;
    return std::nullopt;
}

bool RadioDevices::watch(int descriptor) const {
    epoll_event event{};
    event.events = EPOLLIN;
    return ::epoll_ctl(poll_.number(), EPOLL_CTL_ADD, descriptor, &event) == 0;
}

void RadioDevices::takeEvents(std::vector<std::string>& faults) {
    const auto events = channel_->readyEvents();
    if (!events) {
        // Without events nothing would be learned any more.
        faults.push_back(textOf(events.error()));
        channel_.reset();
        if (auto fault = connect()) faults.push_back(std::move(*fault));
        return;
    }
    if (events->wereLost) stale_ = kAll;
    for (const RadioEvent& event : readAll<RadioEvent>(events->messages, readRadioEvent, faults)) {
        note(event);
    }
}

void RadioDevices::note(const RadioEvent& event) {
    switch (event.kind) {
        case RadioEvent::Kind::Radio:
        case RadioEvent::Kind::RadioGone:
            stale_ = kAll;
            return;
        case RadioEvent::Kind::Interface:
        case RadioEvent::Kind::InterfaceGone:
            stale_.interfaces = true;
            return;
        case RadioEvent::Kind::Regulatory:
            stale_.radios = stale_.domains = true;
            return;
    }
}

void RadioDevices::readStale(std::vector<std::string>& faults) {
    if (channel_ && stale_.radios) stale_.radios = !readRadios(faults);
    if (channel_ && stale_.interfaces) stale_.interfaces = !readInterfaces(faults);
    if (channel_ && stale_.domains) stale_.domains = !readDomains(faults);
}

bool RadioDevices::readRadios(std::vector<std::string>& faults) {
    tool::NetlinkAttributeList attributes;
    attributes.add(NL80211_ATTR_SPLIT_WIPHY_DUMP, std::span<const std::uint8_t>());
    const auto messages = ask(NL80211_CMD_GET_WIPHY, attributes, faults);
    if (!messages) return false;
    std::vector<Radio> radios = joinedRadios(*messages, faults);
    for (Radio& radio : radios) {
        radio.address = files_.addressOfRadio(radio.name);
        radio.driver = files_.driverOfRadio(radio.name);
    }
    list_.radios = std::move(radios);
    return true;
}

bool RadioDevices::readInterfaces(std::vector<std::string>& faults) {
    const auto messages = ask(NL80211_CMD_GET_INTERFACE, {}, faults);
    if (!messages) return false;
    auto told = readAll<RadioInterface>(*messages, readRadioInterface, faults);
    std::ranges::sort(told, {}, &RadioInterface::index);
    std::vector<DeviceInterface> interfaces;
    for (RadioInterface& one : told) {
        const bool isMeant = only_.empty() || std::ranges::find(only_, one.name) != only_.end();
        const bool isThere = !interfaces.empty() && interfaces.back().index == one.index;
        if (!isMeant || isThere) continue;
        std::string driver = files_.driverOfInterface(one.name);
        interfaces.push_back({.name = std::move(one.name),
                              .index = one.index,
                              .address = one.address,
                              .radio = one.radio,
                              .mode = one.mode,
                              .driver = std::move(driver)});
    }
    list_.interfaces = std::move(interfaces);
    return true;
}

bool RadioDevices::readDomains(std::vector<std::string>& faults) {
    const auto messages = ask(NL80211_CMD_GET_REG, {}, faults);
    if (!messages) return false;
    list_.domains = readAll<RegulatoryDomain>(*messages, readRegulatoryDomain, faults);
    return true;
}

std::optional<RadioDevices::Messages> RadioDevices::ask(
    std::uint8_t command, const tool::NetlinkAttributeList& attributes,
    std::vector<std::string>& faults) {
    // A list that changed while it was sent is asked for again.
    for (int i = 0; i < kMostQuestions; ++i) {
        auto answer = channel_->ask({.command = command, .attributes = attributes, .isList = true});
        if (!answer) {
            faults.push_back(textOf(answer.error()));
            // The kernel no longer knows the family.
            const bool isGone =
                answer.error() == tool::Nl80211Fault{.kind = FaultKind::Refused, .error = ENOENT};
            if (isGone) disconnect();
            return std::nullopt;
        }
        const bool isLast = i + 1 == kMostQuestions;
        if (!answer->isInterrupted || isLast) return std::move(answer->messages);
    }
    return std::nullopt;
}

void RadioDevices::disconnect() {
    channel_.reset();
    list_ = {};
}

}  // namespace halvane::hosting
