// pcap, through libpcap. The records that it would hand out as they are skip it.
#include <algorithm>
#include <array>
#include <bits/types/cookie_io_functions_t.h>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <pcap/pcap.h>
#include <stdio_ext.h>
#include <string>
#include <sys/types.h>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/capture/link_type.h"

#include "tools/halvane/input/input_stream.h"
#include "tools/halvane/input/libpcap.h"
#include "tools/halvane/input/link_type_name.h"
#include "tools/halvane/input/packet_source.h"
#include "tools/halvane/input/plain_pcap.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kStreamBuffer = std::size_t{64} << 10;

struct CaptureCloser {
    void operator()(pcap_t* capture) const { libpcap().pcap_close(capture); }
};
using Capture = std::unique_ptr<pcap_t, CaptureCloser>;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// The file's header is read alone, so that the records stay in the stream until libpcap wants one.
ssize_t readStream(void* cookie, char* room, std::size_t size) {
    auto& stream = *static_cast<InputStream*>(cookie);
    if (stream.position() < kPcapFileHeaderSize) {
        size = std::min<std::size_t>(size, kPcapFileHeaderSize - stream.position());
    }
    const auto octets = stream.peek(1);
    if (octets.empty()) {
        errno = EIO;
        return stream.error() ? -1 : 0;
    }
    const auto part = octets.first(std::min(octets.size(), size));
    std::ranges::copy(part, room);
    stream.consume(part.size());
    return static_cast<ssize_t>(part.size());
}

// The network field's F bit says that its upper four bits are the length of each packet's frame
// check sequence, in units of two octets
// (https://www.ietf.org/archive/id/draft-ietf-opsawg-pcap-04.html, 4). Some programs write octets
// there. That of 802.11 has four octets, so both mean the same.
bool tellsFCS(pcap_t* capture) {
    constexpr unsigned kIsPresent = 0x04000000;
    const unsigned extension = static_cast<unsigned>(libpcap().pcap_datalink_ext(capture));
    const unsigned length = extension >> 28;
    return (extension & kIsPresent) != 0 && (length == 2 || length == 4);
}

std::int64_t nanoseconds(const pcap_pkthdr& header) {
    // 32 bits in the file, without a sign.
    const auto seconds = static_cast<std::uint32_t>(header.ts.tv_sec);
    return std::int64_t{seconds} * 1'000'000'000 + std::int64_t{header.ts.tv_usec};
}

class PcapSource : public PacketSource {
  public:
    PcapSource(std::unique_ptr<InputStream> stream, std::optional<PlainPcap> plain, Capture capture,
               capture::LinkType linkType)
        : stream_(std::move(stream)),
          plain_(plain),
          blank_(Packet{.linkType = linkType, .endsInFCS = tellsFCS(capture.get())}),
          capture_(std::move(capture)) {}

    NextPacket next() override {
        if (plain_) {
            if (const auto record = plain_->next(*stream_)) return packetOf(*record);
            plain_.reset();  // libpcap reads ahead, so the rest is its own
        }
        return nextOfLibpcap();
    }

    std::uint64_t bytesRead() const override {
        return stream_->isCompressed() ? stream_->fileOffset() : bytesRead_;
    }

  private:
    NextPacket nextOfLibpcap() {
        pcap_pkthdr* header = nullptr;
        const u_char* bytes = nullptr;
        const int outcome = libpcap().pcap_next_ex(capture_.get(), &header, &bytes);
        if (outcome == PCAP_ERROR) {
            return Unexpected(fault());
        }
        if (outcome != 1) return std::optional<Packet>();
        return packetOf({.bytes = {bytes, header->caplen},
                         .originalLength = header->len,
                         .time = nanoseconds(*header)});
    }

    // Fills the packet in where it stays: copying what was just written takes longer than copying
    // what was written long ago.
    NextPacket packetOf(const PlainPcapRecord& record) {
        bytesRead_ += kPcapRecordHeaderSize + record.bytes.size();
        NextPacket next = blank_;
        Packet& packet = **next;
        packet.number = ++count_;
        packet.bytes = record.bytes;
        packet.originalLength = record.originalLength;
        packet.time = record.time;
        return next;
    }

    std::string fault() const {
        if (stream_->error()) return beyondFrame(count_, *stream_->error());
        // libpcap asks for octets beyond the end only where a record is cut.
        if (std::feof(libpcap().pcap_file(capture_.get())) != 0) return endsInFrame(count_);
        return beyondFrame(count_, libpcap().pcap_geterr(capture_.get()));
    }

    std::unique_ptr<InputStream> stream_;  // the capture reads it
    std::optional<PlainPcap> plain_;       // until libpcap has read a record
    const std::optional<Packet> blank_;    // what all packets have in common
    std::uint64_t count_ = 0;
    std::uint64_t bytesRead_ = kPcapFileHeaderSize;
    Capture capture_;
};

}  // namespace

OpenedSource openPcap(std::unique_ptr<InputStream> stream) {
    if (libpcap().problem) return Unexpected(std::string(libpcap().problem));
    const auto plain = PlainPcap::of(*stream);
    cookie_io_functions_t functions{};
    functions.read = readStream;
    std::unique_ptr<std::FILE, FileCloser> file(::fopencookie(stream.get(), "rb", functions));
    if (!file) return Unexpected(std::string("not enough memory to read"));
    std::setvbuf(file.get(), nullptr, _IOFBF, kStreamBuffer);
    ::__fsetlocking(file.get(), FSETLOCKING_BYCALLER);  // one thread at a time has the source

    std::array<char, PCAP_ERRBUF_SIZE> reason{};
    Capture capture(libpcap().pcap_fopen_offline_with_tstamp_precision(
        file.get(), PCAP_TSTAMP_PRECISION_NANO, reason.data()));
    if (!capture) {
        if (stream->error()) return Unexpected(*stream->error());
        return Unexpected(std::string("not a readable capture: ") + reason.data());
    }
    static_cast<void>(file.release());  // closed with the capture

    const int number = libpcap().pcap_datalink(capture.get());
    const auto linkType = capture::linkTypeOfNumber(number);
    if (!linkType) return Unexpected(notWiFiFault(number));
    return OpenedSource(
        std::make_unique<PcapSource>(std::move(stream), plain, std::move(capture), *linkType));
}

}  // namespace halvane::tool
