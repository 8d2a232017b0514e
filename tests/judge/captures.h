// Capture files to judge: those outside of the tree, and one of the samples of elements.
#ifndef TESTS_JUDGE_CAPTURES_H
#define TESTS_JUDGE_CAPTURES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/element_id.h"
#include "halvane/base/byte_buffer.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

namespace halvane::testing {

// The capture files in a folder by name; empty if there is no such folder.
inline std::vector<std::string> capturesIn(const std::filesystem::path& folder) {
    std::vector<std::string> paths;
    if (!std::filesystem::exists(folder)) return paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string extension = entry.path().extension();
        if (extension == ".pcap" || extension == ".cap" || extension == ".pcapng") {
            paths.push_back(entry.path());
        }
    }
    std::ranges::sort(paths);
    return paths;
}

// Each sample as an element with its header.
inline std::vector<Bytes> sampleElements() {
    std::vector<Bytes> elements;
    const auto add = [&](std::uint8_t id, Bytes head, const Bytes& body) {
        head.insert(head.end(), body.begin(), body.end());
        head.insert(head.begin(), {id, static_cast<std::uint8_t>(head.size())});
        elements.push_back(std::move(head));
    };
    for (const ElementSample& sample : kElementSamples) {
        const auto extension = air::extensionOf(sample.id);
        add(air::idOctetOf(sample.id), extension ? Bytes{*extension} : Bytes{},
            bytesOf(sample.hex));
    }
    for (const VendorSample& sample : kVendorSamples) {
        Bytes head(sample.oui.begin(), sample.oui.end());
        head.push_back(sample.type);
        add(air::idOctetOf(air::ElementId::Vendor), head, bytesOf(sample.hex));
    }
    return elements;
}

// The same, with elements that tshark decodes only in these forms.
inline std::vector<Bytes> judgedSamples() {
    std::vector<Bytes> elements = sampleElements();
    for (const std::string_view hex : {
             // TWT: an individual request, as in the first frame of an agreement
             "D8 0F 00 6128 0102030405060708 40 0002 01",
             // Reduced Neighbor Report: one channel with BSSID, short SSID, parameters and PSD
             "C9 11 000D 83 25 14 0200000000AA 12345678 5A FE",
             // Spatial Reuse Parameter Set: offsets above 127
             "FF 15 27 0C 8A 82 94 2400000000000080 0100000000000000",
         }) {
        elements.push_back(bytesOf(hex));
    }
    return elements;
}

inline void appendNumber(Bytes& bytes, std::uint64_t number, int octets) {
    for (int i = 0; i < octets; ++i) bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

// A capture file (pcap, link type 105: bare 802.11) with a beacon for each element.
inline Bytes captureOf(std::span<const Bytes> elements) {
    Bytes file;
    appendNumber(file, 0xA1B2C3D4, 4);
    appendNumber(file, 0x00040002, 4);  // version 2.4
    for (const std::uint32_t word : {0u, 0u, 65535u, 105u}) appendNumber(file, word, 4);
    const Bytes head = bytesOf(
        "80000000 FFFFFFFFFFFF 020000000001 020000000001 0000 "
        "0000000000000000 6400 1100");
    for (const Bytes& element : elements) {
        appendNumber(file, 0, 8);  // time
        const auto size = static_cast<std::uint32_t>(head.size() + element.size());
        appendNumber(file, size, 4);
        appendNumber(file, size, 4);
        file.insert(file.end(), head.begin(), head.end());
        file.insert(file.end(), element.begin(), element.end());
    }
    return file;
}

}  // namespace halvane::testing

#endif
