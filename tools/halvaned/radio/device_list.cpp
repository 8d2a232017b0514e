#include "tools/halvaned/radio/device_list.h"

#include <algorithm>

namespace halvane::hosting {

namespace {

template <typename Item, typename Value, typename Member>
const Item* found(const std::vector<Item>& items, const Value& value, Member member) {
    const auto item = std::ranges::find(items, value, member);
    return item == items.end() ? nullptr : &*item;
}

}  // namespace

const DeviceInterface* DeviceList::find(std::string_view interface) const {
    return found(interfaces, interface, &DeviceInterface::name);
}

const Radio* DeviceList::radioOf(const DeviceInterface& interface) const {
    return interface.radio ? found(radios, *interface.radio, &Radio::index) : nullptr;
}

std::optional<std::string> DeviceList::countryOf(const DeviceInterface& interface) const {
    if (!interface.radio) return std::nullopt;
    const auto* domain = found(domains, interface.radio, &RegulatoryDomain::radio);
    if (domain == nullptr) {
        domain = found(domains, std::optional<std::uint32_t>(), &RegulatoryDomain::radio);
    }
    return domain != nullptr ? std::optional(domain->country) : std::nullopt;
}

}  // namespace halvane::hosting
