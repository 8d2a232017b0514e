#include "halvane/air/rm_enabled_capabilities.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

// 9.4.2.44.
constexpr BitField kCapabilities[] = {
    {0, 1, "Link Measurement"},
    {1, 1, "Neighbor Report"},
    {2, 1, "Parallel Measurements"},
    {3, 1, "Repeated Measurements"},
    {4, 1, "Beacon Passive Measurement"},
    {5, 1, "Beacon Active Measurement"},
    {6, 1, "Beacon Table Measurement"},
    {7, 1, "Beacon Measurement Reporting Conditions"},
    {8, 1, "Frame Measurement"},
    {9, 1, "Channel Load Measurement"},
    {10, 1, "Noise Histogram Measurement"},
    {11, 1, "Statistics Measurement"},
    {12, 1, "LCI Measurement"},
    {13, 1, "LCI Azimuth"},
    {14, 1, "Transmit Stream/Category Measurement"},
    {15, 1, "Triggered Transmit Stream/Category Measurement"},
    {16, 1, "AP Channel Report"},
    {17, 1, "RM MIB"},
    {18, 3, "Operating Channel Max Measurement Duration"},
    {21, 3, "Nonoperating Channel Max Measurement Duration"},
    {24, 3, "Measurement Pilot Capability"},
    {27, 1, "Measurement Pilot Transmission Information"},
    {28, 1, "Neighbor Report TSF Offset"},
    {29, 1, "RCPI Measurement"},
    {30, 1, "RSNI Measurement"},
    {31, 1, "BSS Average Access Delay"},
    {32, 1, "BSS Available Admission Capacity"},
    {33, 1, "Antenna"},
    {34, 1, "FTM Range Report"},
    {35, 1, "Civic Location Measurement"},
    {36, 4, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.bits(element.bits, kCapabilities);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(RmEnabledCapabilities, kLayout)

}  // namespace halvane::air
