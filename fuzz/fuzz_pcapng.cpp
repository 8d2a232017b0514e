// A pcapng file of any blocks, most of them whole: each frame has the next number, its spans lie
// within the file, and an error names the file.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "halvane/capture/captured_frame.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"
#include "tools/halvane/input/capture_reader.h"

using halvane::fuzzing::ByteSource;
using namespace halvane::tool;

namespace {

using Bytes = std::vector<std::uint8_t>;

class File {
  public:
    explicit File(ByteSource& source) : source_(source), isBigEndian_(source.flag()) {
        addSection();
        while (!source_.empty()) addBlock();
    }

    const Bytes& bytes() const { return bytes_; }

  private:
    void number(Bytes& bytes, std::uint64_t value, std::size_t size) const {
        for (std::size_t i = 0; i < size; ++i) {
            bytes.push_back(
                static_cast<std::uint8_t>(value >> 8 * (isBigEndian_ ? size - 1 - i : i)));
        }
    }

    void finish(std::uint32_t type, Bytes body) {
        while (body.size() % 4 != 0) body.push_back(0);
        const std::size_t size = body.size() + 12;
        number(bytes_, type, 4);
        number(bytes_, size, 4);
        bytes_.insert(bytes_.end(), body.begin(), body.end());
        number(bytes_, size, 4);
    }

    void addSection() {
        Bytes body;
        number(body, 0x1A2B3C4D, 4);
        number(body, 1, 4);
        number(body, UINT64_MAX, 8);
        finish(0x0A0D0D0A, body);
    }

    void addOptions(Bytes& body) {
        constexpr std::uint16_t kCodes[] = {0, 1, 2, 9, 13, 14, 2988};
        while (source_.flag()) {
            const auto value = source_.bytes(12);
            number(body, source_.oneOf(kCodes), 2);
            number(body, value.size(), 2);
            body.insert(body.end(), value.begin(), value.end());
            body.resize((body.size() + 3) / 4 * 4);
        }
    }

    void addInterface() {
        constexpr std::uint16_t kLinkTypes[] = {105, 119, 127, 163, 192, 1};
        Bytes body;
        number(body, source_.oneOf(kLinkTypes), 4);
        number(body, source_.byte(), 4);
        addOptions(body);
        finish(1, body);
    }

    // Lengths may be wrong by what the input says.
    void addPacket(std::uint32_t type) {
        Bytes body;
        if (type != 3) {
            number(body, source_.byte() % 4, type == 2 ? 2 : 4);
            if (type == 2) number(body, 0, 2);
            for (int i = 0; i < 2; ++i) number(body, source_.integer<std::uint32_t>(), 4);
        }
        const auto wrong = source_.flag() ? source_.byte() : 0u;
        const auto packet = source_.bytes();
        if (type != 3) number(body, packet.size() + (wrong & 0xF), 4);
        number(body, packet.size() + wrong, 4);
        body.insert(body.end(), packet.begin(), packet.end());
        body.resize((body.size() + 3) / 4 * 4);
        if (type == 6) addOptions(body);
        finish(type, body);
    }

    void addBlock() {
        switch (const auto kind = source_.below(8)) {
            case 0:
                isBigEndian_ = source_.flag();
                return addSection();
            case 1:
                return addInterface();
            case 2:
            case 3:
            case 6:
                return addPacket(static_cast<std::uint32_t>(kind));
            case 7: {
                const auto raw = source_.bytes();
                bytes_.insert(bytes_.end(), raw.begin(), raw.end());
                return;
            }
            default: {
                const auto body = source_.bytes();
                return finish(static_cast<std::uint32_t>(kind), {body.begin(), body.end()});
            }
        }
    }

    ByteSource& source_;
    bool isBigEndian_;
    Bytes bytes_;
};

void check(std::span<const std::uint8_t> file) {
    const int descriptor = ::memfd_create("pcapng", MFD_CLOEXEC);
    REQUIRE(::write(descriptor, file.data(), file.size()) == static_cast<ssize_t>(file.size()));
    const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    auto reader = CaptureReader::open(path);
    REQUIRE(reader || reader.error().text.starts_with(path + ": "));
    std::uint64_t last = 0, count = 0;
    while (reader) {
        const auto frame = reader->next();
        if (!frame) break;
        REQUIRE(frame->number > last && frame->radio.frame.size() <= file.size());
        last = frame->number;
        ++count;
    }
    if (reader) {
        REQUIRE(reader->summary().frames == count && !reader->next());
        REQUIRE(reader->error() || reader->bytesRead() == file.size());
        REQUIRE(!reader->error() || reader->error()->text.starts_with(path + ": "));
        REQUIRE(!reader->note() || reader->note()->starts_with(path + ": "));
    }
    ::close(descriptor);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteSource source(data, size);
    check(File(source).bytes());
    return 0;
}
