#include "tools/make_samples/air_elements.h"

#include <cstddef>

#include "halvane/air/access_category.h"
#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_load.h"
#include "halvane/air/element_range.h"
#include "halvane/air/mobility_domain.h"
#include "halvane/air/rm_enabled_capabilities.h"
#include "halvane/air/rsn.h"
#include "halvane/air/suite.h"
#include "halvane/air/tim.h"
#include "halvane/air/wmm.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/oui.h"

#include "tools/make_samples/flags.h"

namespace halvane::samples {

namespace {

air::Suite suite(std::uint8_t type) {
    return {kRSNOUI, type};
}

template <typename List>
List suites(const Bytes& types) {
    List list;
    for (const std::uint8_t type : types) list.push_back(suite(type));
    return list;
}

air::EdcaRecord edcaRecord(std::uint8_t priority, std::uint8_t window, std::uint16_t txopLimit) {
    return {{{{priority}}}, {{{window}}}, txopLimit};
}

}  // namespace

air::ElementId idOf(const Bytes& element) {
    return air::ElementRange(element).begin()->id;
}

// --- Security ---

Bytes rsnOf(const Keys& keys) {
    air::Rsn rsn;
    rsn.group = suite(keys.group);
    rsn.pairwise = suites<air::Rsn::Suites>(keys.pairwise);
    rsn.akms = suites<air::Rsn::Suites>(keys.akms);
    rsn.capabilities.emplace();
    if (keys.pmf != air::Pmf::None) setFlags(*rsn.capabilities, {air::RsnCapability::PmfCapable});
    if (keys.pmf == air::Pmf::Required) {
        setFlags(*rsn.capabilities, {air::RsnCapability::PmfRequired});
    }
    if (keys.groupManagement) {
        rsn.pmkids.emplace();  // the count stands before the cipher, even if it is 0
        rsn.groupManagement = suite(*keys.groupManagement);
    }
    return airElement(rsn);
}

Bytes rsnxOf(std::initializer_list<air::RsnxCapability> capabilities) {
    air::Rsnx rsnx;
    for (const auto capability : capabilities) rsnx.setCapability(capability);
    return airElement(rsnx);
}

Keys wpa3Personal() {
    return {.akms = {kSAE}, .pmf = air::Pmf::Required, .groupManagement = kBIPCMAC128};
}

Bytes hashToElement() {
    return rsnxOf({air::RsnxCapability::SaeHashToElement});
}

// --- What an access point tells of itself ---

Bytes timOf(std::uint8_t dtimPeriod) {
    air::Tim tim;
    tim.dtimPeriod = dtimPeriod;
    tim.bitmapControl.emplace();
    tim.partialBitmap = ByteBuffer{0x00};
    return airElement(tim);
}

Bytes loadOf(std::uint16_t stations, std::uint8_t utilization) {
    air::BssLoad load;
    load.stationCount = stations;
    load.channelUtilization = utilization;
    return airElement(load);
}

Bytes radioMeasurement() {
    using Capability = air::RmCapability;
    air::RmEnabledCapabilities element;
    setFlags(element.bits,
             {Capability::LinkMeasurement, Capability::NeighborReport, Capability::BeaconPassive,
              Capability::BeaconActive, Capability::BeaconTable});
    return airElement(element);
}

Bytes mobilityDomain() {
    air::MobilityDomain element;
    element.identifier = {0x1A, 0x2B};
    return airElement(element);
}

Bytes extendedCapabilities(std::initializer_list<air::ExtendedCapability> capabilities) {
    air::ExtendedCapabilities element;
    for (const auto capability : capabilities) element.setCapability(capability);
    return airElement(element);
}

// The defaults of the standard (table 9-155).
Bytes wmmParameters() {
    constexpr std::uint8_t kUapsd = 0x80;
    air::Wmm wmm;
    wmm.subtypeNumber = static_cast<std::uint8_t>(air::WmmSubtype::Parameter);
    wmm.qosInfo = air::BitOctets<1>{{kUapsd | 1}};
    wmm.parameters = air::WmmParameters{0,
                                        {edcaRecord(0x03, 0xA4, 0), edcaRecord(0x27, 0xA4, 0),
                                         edcaRecord(0x42, 0x43, 94), edcaRecord(0x62, 0x32, 47)}};
    return airElement(wmm);
}

}  // namespace halvane::samples
