// Makes records of interfaces, which clients only read.
//
// A value type. Threads: as for a HalvaneInterface.
#ifndef HALVANE_MODEL_INTERFACE_BUILDER_H
#define HALVANE_MODEL_INTERFACE_BUILDER_H

#include <string>
#include <vector>

#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

namespace halvane {

class HALVANE_EXPORT InterfaceBuilder {
  public:
    // An interface with what every interface has to have. It has no address, no device and no
    // channels.
    InterfaceBuilder(std::string name, std::string role, std::string subsystem);

    // A copy to change. It shares the device until device() replaces it.
    explicit InterfaceBuilder(HalvaneInterface interface);

    // Each sets what the function of HalvaneInterface returns.
    InterfaceBuilder& role(std::string value);
    InterfaceBuilder& address(const MacAddress& value);
    InterfaceBuilder& device(const HalvaneDevice& value);
    InterfaceBuilder& channels(std::vector<HalvaneChannel> value);

    // An interface with what was set.
    HalvaneInterface build() const { return interface_; }

  private:
    HalvaneInterface interface_;
};

}  // namespace halvane

#endif
