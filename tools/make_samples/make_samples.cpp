// Writes the captures of samples/ into a folder: make_samples <folder>. It writes the same bytes
// every time.
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

#include "tools/make_samples/bytes.h"
#include "tools/make_samples/scenes.h"

using namespace halvane::samples;

namespace {

struct Sample {
    const char* name;
    Bytes (*build)();
};

constexpr Sample kSamples[] = {
    {"neighbourhood.pcap", neighbourhoodCapture},
    {"elements.pcap", elementsCapture},
    {"security.pcap", securityCapture},
    {"setup.pcap", setupCapture},
    {"country.pcapng", countryCapture},
    {"damaged.pcap", damagedCapture},
    {"today.pcap", todayCapture},
    {"shared-beacon.pcap", sharedBeaconCapture},
    {"multi-link.pcap", multiLinkCapture},
    {"contradictions.pcap", contradictionsCapture},
};

bool write(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    for (const std::uint8_t byte : bytes) file.put(static_cast<char>(byte));
    file.close();
    if (file) return true;
    std::fprintf(stderr, "make_samples: %s: cannot be written\n", path.c_str());
    return false;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: make_samples <folder>\n", stderr);
        return 2;
    }
    for (const Sample& sample : kSamples) {
        if (!write(std::string(arguments[1]) + "/" + sample.name, sample.build())) return 1;
    }
    return 0;
}
