// Captures as a stranger may write them, in files that are removed with their object.
#ifndef BENCH_CAPTURE_INPUT_H
#define BENCH_CAPTURE_INPUT_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>
#include <utility>

#include "bench/foreign_bytes.h"

namespace bench {

// A file in the folder for temporary ones.
class TemporaryFile {
  public:
    explicit TemporaryFile(const Bytes& content) {
        const char* const folder = std::getenv("TMPDIR");
        path_ = std::string(folder != nullptr ? folder : "/tmp") + "/halvane-bench-XXXXXX";
        const int file = ::mkstemp(path_.data());
        if (file < 0) std::abort();
        ::close(file);
        std::ofstream stream(path_, std::ios::binary);
        stream.write(reinterpret_cast<const char*>(content.data()),
                     static_cast<std::streamsize>(content.size()));
        if (!stream.flush()) std::abort();
    }
    ~TemporaryFile() {
        if (!path_.empty()) ::unlink(path_.c_str());
    }
    TemporaryFile(TemporaryFile&& other) noexcept : path_(std::exchange(other.path_, {})) {}
    TemporaryFile(const TemporaryFile&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

inline void append32(Bytes& bytes, std::size_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

// A beacon of station `number`.
inline Bytes beacon(std::size_t number, const Bytes& elements) {
    Bytes frame;
    append(frame, {0x80, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
    for (int i = 0; i < 2; ++i) {
        append(frame, {2, 0});
        append32(frame, number);
    }
    append(frame, {0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 100, 0, 0x11, 0x04});
    append(frame, elements);
    return frame;
}

// https://www.ietf.org/archive/id/draft-ietf-opsawg-pcap-04.html, little-endian.
class PcapFile {
  public:
    static constexpr std::size_t kIEEE80211 = 105;
    static constexpr std::size_t kRadiotap = 127;
    static constexpr std::size_t kPPI = 192;

    explicit PcapFile(std::size_t linkType) {
        append(bytes_, {0xD4, 0xC3, 0xB2, 0xA1, 2, 0, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        append32(bytes_, std::size_t{1} << 18);
        append32(bytes_, linkType);
    }

    void add(const Bytes& packet) {
        append32(bytes_, 0);
        append32(bytes_, 0);
        append32(bytes_, packet.size());
        append32(bytes_, packet.size());
        append(bytes_, packet);
    }

    const Bytes& bytes() const { return bytes_; }

  private:
    Bytes bytes_;
};

// https://www.ietf.org/archive/id/draft-ietf-opsawg-pcapng-03.html, little-endian.
class PcapngFile {
  public:
    static constexpr unsigned kInterface = 1;
    static constexpr unsigned kPacket = 6;
    static constexpr unsigned kSection = 0x0A0D0D0A;
    static constexpr unsigned kUnknown = 0x0BAD;

    PcapngFile() { addSection(); }

    // REQUIRES: as many bytes as a multiple of 4.
    void addBlock(unsigned type, const Bytes& body) {
        append32(bytes_, type);
        append32(bytes_, body.size() + 12);
        append(bytes_, body);
        append32(bytes_, body.size() + 12);
    }

    void addSection() {
        addBlock(kSection,
                 {0x4D, 0x3C, 0x2B, 0x1A, 1, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255});
    }

    void addInterface(const Bytes& options = {}) {
        Bytes body;
        append32(body, PcapFile::kIEEE80211);
        append32(body, std::size_t{1} << 18);
        append(body, options);
        addBlock(kInterface, body);
    }

    void addPacket(std::size_t interface, const Bytes& packet) {
        Bytes body;
        append32(body, interface);
        append32(body, 0);
        append32(body, 0);
        append32(body, packet.size());
        append32(body, packet.size());
        append(body, packet);
        body.resize((body.size() + 3) / 4 * 4);
        addBlock(kPacket, body);
    }

    const Bytes& bytes() const { return bytes_; }

  private:
    Bytes bytes_;
};

}  // namespace bench

#endif
