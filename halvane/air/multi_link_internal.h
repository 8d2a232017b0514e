// The names of the bits of Multi-Link.
#ifndef HALVANE_AIR_MULTI_LINK_INTERNAL_H
#define HALVANE_AIR_MULTI_LINK_INTERNAL_H

#include <span>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/multi_link.h"

namespace halvane::air {

inline constexpr ValueName kMultiLinkTypes[] = {{0, "Basic"},
                                                {1, "Probe Request"},
                                                {2, "Reconfiguration"},
                                                {3, "TDLS"},
                                                {4, "Priority Access"}};

inline constexpr BitField kBasicControl[] = {
    {0, 3, "Type", {.names = kMultiLinkTypes}},
    {3, 1, "Reserved"},
    {4, 1, "Link ID Info Present"},
    {5, 1, "BSS Parameters Change Count Present"},
    {6, 1, "Medium Synchronization Delay Information Present"},
    {7, 1, "EML Capabilities Present"},
    {8, 1, "MLD Capabilities And Operations Present"},
    {9, 1, "AP MLD ID Present"},
    {10, 1, "Extended MLD Capabilities And Operations Present"},
    {11, 5, "Reserved"},
};
inline constexpr BitField kProbeRequestControl[] = {
    {0, 3, "Type", {.names = kMultiLinkTypes}},
    {3, 1, "Reserved"},
    {4, 1, "AP MLD ID Present"},
    {5, 11, "Reserved"},
};
inline constexpr BitField kReconfigurationControl[] = {
    {0, 3, "Type", {.names = kMultiLinkTypes}},
    {3, 1, "Reserved"},
    {4, 1, "MLD MAC Address Present"},
    {5, 1, "EML Capabilities Present"},
    {6, 1, "MLD Capabilities And Operations Present"},
    {7, 1, "Extended MLD Capabilities And Operations Present"},
    {8, 8, "Reserved"},
};
// Also of the reserved types.
inline constexpr BitField kOtherControl[] = {
    {0, 3, "Type", {.names = kMultiLinkTypes}},
    {3, 1, "Reserved"},
    {4, 12, "Presence Bitmap"},
};

constexpr std::span<const BitField> multiLinkControlFields(MultiLinkType type) {
    switch (type) {
        case MultiLinkType::Basic:
            return kBasicControl;
        case MultiLinkType::ProbeRequest:
            return kProbeRequestControl;
        case MultiLinkType::Reconfiguration:
            return kReconfigurationControl;
        case MultiLinkType::Tdls:
        case MultiLinkType::PriorityAccess:
            break;
    }
    return kOtherControl;
}

inline constexpr BitField kLinkIdInfo[] = {{0, 4, "Link ID"}, {4, 4, "Reserved"}};

inline constexpr BitField kMediumSynchronizationDelay[] = {
    {0, 8, "Medium Synchronization Duration", {.unit = "32 us"}},
    {8, 4, "Medium Synchronization OFDM ED Threshold", {.unit = "dB above -72 dBm"}},
    {12, 4, "Medium Synchronization Maximum Number Of TXOPs"},
};

inline constexpr ValueName kPaddingDelays[] = {
    {0, "0 us"}, {1, "32 us"}, {2, "64 us"}, {3, "128 us"}, {4, "256 us"}};
inline constexpr ValueName kTransitionDelays[] = {{0, "0 us"},  {1, "16 us"},  {2, "32 us"},
                                                  {3, "64 us"}, {4, "128 us"}, {5, "256 us"}};
inline constexpr ValueName kTransitionTimeouts[] = {
    {0, "0"},    {1, "128 us"}, {2, "256 us"}, {3, "512 us"}, {4, "1 TU"},   {5, "2 TU"},
    {6, "4 TU"}, {7, "8 TU"},   {8, "16 TU"},  {9, "32 TU"},  {10, "64 TU"}, {11, "128 TU"}};

inline constexpr BitField kEmlCapabilities[] = {
    {0, 1, "EMLSR Support"},
    {1, 3, "EMLSR Padding Delay", {.names = kPaddingDelays}},
    {4, 3, "EMLSR Transition Delay", {.names = kTransitionDelays}},
    {7, 1, "EMLMR Support"},
    {8, 3, "EMLMR Delay", {.names = kPaddingDelays}},
    {11, 4, "Transition Timeout", {.names = kTransitionTimeouts}},
    {15, 1, "Reserved"},
};

inline constexpr ValueName kTidToLinkNegotiations[] = {{0, "not supported"},
                                                       {1, "all TIDs to the same links"},
                                                       {3, "TIDs to the same or other links"}};

inline constexpr BitField kMldCapabilities[] = {
    {0, 4, "Maximum Number Of Simultaneous Links less 1"},
    {4, 1, "SRS Support"},
    {5, 2, "TID-To-Link Mapping Negotiation Support", {.names = kTidToLinkNegotiations}},
    {7, 5, "Frequency Separation For STR/AP MLD Type Indication"},
    {12, 1, "AAR Support"},
    {13, 1, "Link Reconfiguration Operation Support"},
    {14, 1, "Aligned TWT Support"},
    {15, 1, "Reserved"},
};

inline constexpr BitField kExtendedMldCapabilities[] = {
    {0, 1, "Operation Parameter Update Support"},
    {1, 4, "Recommended Max Simultaneous Links"},
    {5, 1, "NSTR Status Update Support"},
    {6, 1, "EMLSR Enablement On One Link Support"},
    {7, 1, "BTM MLD Recommendation For Multiple APs Support"},
    {8, 8, "Reserved"},
};

inline constexpr ValueName kMultiLinkSubelements[] = {
    {0, "Per-STA Profile"}, {221, "Vendor Specific"}, {254, "Fragment"}};

inline constexpr BitField kBasicStaControl[] = {
    {0, 4, "Link ID"},
    {4, 1, "Complete Profile"},
    {5, 1, "STA MAC Address Present"},
    {6, 1, "Beacon Interval Present"},
    {7, 1, "TSF Offset Present"},
    {8, 1, "DTIM Info Present"},
    {9, 1, "NSTR Link Pair Present"},
    {10, 1, "NSTR Bitmap Size"},
    {11, 1, "BSS Parameters Change Count Present"},
    {12, 4, "Reserved"},
};
inline constexpr BitField kProbeRequestStaControl[] = {
    {0, 4, "Link ID"}, {4, 1, "Complete Profile Requested"}, {5, 11, "Reserved"}};

inline constexpr ValueName kReconfigurationOperations[] = {{0, "AP Removal"},
                                                           {1, "Operation Parameter Update"},
                                                           {2, "Add Link"},
                                                           {3, "Delete Link"},
                                                           {4, "NSTR Status Update"}};
inline constexpr BitField kReconfigurationStaControl[] = {
    {0, 4, "Link ID"},
    {4, 1, "Complete Profile"},
    {5, 1, "STA MAC Address Present"},
    {6, 1, "AP Removal Timer Present"},
    {7, 4, "Reconfiguration Operation Type", {.names = kReconfigurationOperations}},
    {11, 1, "Operation Parameters Present"},
    {12, 1, "NSTR Bitmap Size"},
    {13, 1, "NSTR Indication Bitmap Present"},
    {14, 2, "Reserved"},
};
inline constexpr BitField kPriorityAccessStaControl[] = {{0, 4, "Link ID"}, {4, 12, "Reserved"}};

constexpr std::span<const BitField> staControlFields(MultiLinkType type) {
    switch (type) {
        case MultiLinkType::Basic:
            return kBasicStaControl;
        case MultiLinkType::ProbeRequest:
            return kProbeRequestStaControl;
        case MultiLinkType::Reconfiguration:
            return kReconfigurationStaControl;
        case MultiLinkType::Tdls:
        case MultiLinkType::PriorityAccess:
            break;
    }
    return kPriorityAccessStaControl;
}

}  // namespace halvane::air

#endif
