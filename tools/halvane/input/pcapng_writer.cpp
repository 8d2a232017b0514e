#include "tools/halvane/input/pcapng_writer.h"

#include <algorithm>
#include <cerrno>
#include <concepts>
#include <fcntl.h>
#include <iterator>
#include <sys/types.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "tools/halvane/input/pcapng_block.h"

namespace halvane::tool {

namespace {

using Octets = std::vector<std::uint8_t>;

constexpr std::size_t kMostInMemory = std::size_t{64} << 10;
constexpr std::uint32_t kInterfaceStatistics = 5;  // a block's type
constexpr std::uint8_t kNanoseconds = 9;           // 10 to the power of -9

// The file's byte order is little-endian, whatever that of the machine.
template <std::unsigned_integral Number>
void append(Octets& octets, Number number) {
    for (std::size_t i = 0; i < sizeof number; ++i) {
        octets.push_back(static_cast<std::uint8_t>(number >> 8 * i));
    }
}

void appendPadded(Octets& octets, std::span<const std::uint8_t> bytes) {
    octets.insert(octets.end(), bytes.begin(), bytes.end());
    octets.resize((octets.size() + 3) / 4 * 4);
}

void appendOption(Octets& octets, std::uint16_t code, std::span<const std::uint8_t> value) {
    append(octets, code);
    append(octets, static_cast<std::uint16_t>(value.size()));
    appendPadded(octets, value);
}

void appendOption(Octets& octets, std::uint16_t code, const std::string& text) {
    appendOption(octets, code, Octets(text.begin(), text.end()));
}

void appendOption(Octets& octets, std::uint16_t code, std::uint64_t number) {
    Octets value;
    append(value, number);
    appendOption(octets, code, value);
}

void endOptions(Octets& octets) {
    append(octets, std::uint32_t{0});
}

// The upper half comes first.
void appendTime(Octets& octets, std::int64_t time) {
    const auto ticks = static_cast<std::uint64_t>(time);
    append(octets, static_cast<std::uint32_t>(ticks >> 32));
    append(octets, static_cast<std::uint32_t>(ticks));
}

}  // namespace

Result<PcapngWriter, std::string> PcapngWriter::create(const std::string& path,
                                                       std::span<const WrittenInterface> interfaces,
                                                       const std::string& program) {
    const bool isOutput = path == "-";
    const std::string name = isOutput ? "standard output" : path;
    const int descriptor =
        isOutput ? STDOUT_FILENO
                 : ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        return Unexpected(name + ": " + std::generic_category().message(errno));
    }
    PcapngWriter writer(name, descriptor, !isOutput);
    writer.addSection(program);
    for (const WrittenInterface& interface : interfaces) writer.addInterface(interface);
    if (const auto fault = writer.flush()) return Unexpected(*fault);
    return Result<PcapngWriter, std::string>(std::move(writer));
}

PcapngWriter::PcapngWriter(PcapngWriter&& other) noexcept
    : name_(std::move(other.name_)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      isOwned_(std::exchange(other.isOwned_, false)),
      blocks_(std::exchange(other.blocks_, {})),
      ends_(std::exchange(other.ends_, {})),
      fault_(std::move(other.fault_)) {}

PcapngWriter::~PcapngWriter() {
    if (descriptor_ < 0) return;
    flush();
    if (isOwned_) ::close(descriptor_);
}

std::size_t PcapngWriter::beginBlock(std::uint32_t type) {
    const std::size_t start = blocks_.size();
    append(blocks_, type);
    append(blocks_, std::uint32_t{0});  // the length
    return start;
}

void PcapngWriter::endBlock(std::size_t start) {
    Octets length;
    append(length, static_cast<std::uint32_t>(blocks_.size() - start + sizeof(std::uint32_t)));
    std::ranges::copy(length, blocks_.begin() + static_cast<std::ptrdiff_t>(start) + 4);
    blocks_.insert(blocks_.end(), length.begin(), length.end());
    ends_.push_back(blocks_.size());
}

void PcapngWriter::addSection(const std::string& program) {
    constexpr std::uint32_t kByteOrder = 0x1A2B3C4D;
    constexpr std::uint16_t kProgram = 4;
    const std::size_t start = beginBlock(static_cast<std::uint32_t>(BlockType::Section));
    append(blocks_, kByteOrder);
    append(blocks_, std::uint16_t{1});  // version 1.0
    append(blocks_, std::uint16_t{0});
    append(blocks_, UINT64_MAX);  // the section's length is not known yet
    appendOption(blocks_, kProgram, program);
    endOptions(blocks_);
    endBlock(start);
}

void PcapngWriter::addInterface(const WrittenInterface& interface) {
    constexpr std::uint16_t kName = 2, kResolution = 9;
    const std::size_t start = beginBlock(static_cast<std::uint32_t>(BlockType::Interface));
    append(blocks_, static_cast<std::uint16_t>(interface.linkType));
    append(blocks_, std::uint16_t{0});
    append(blocks_, interface.snapshotLength);
    appendOption(blocks_, kName, interface.name);
    appendOption(blocks_, kResolution, Octets{kNanoseconds});
    endOptions(blocks_);
    endBlock(start);
}

PcapngWriter::Fault PcapngWriter::add(const Packet& packet) {
    if (fault_) return fault_;
    const std::size_t start = beginBlock(static_cast<std::uint32_t>(BlockType::EnhancedPacket));
    append(blocks_, packet.interface);
    appendTime(blocks_, packet.time.value_or(0));
    append(blocks_, static_cast<std::uint32_t>(packet.bytes.size()));
    append(blocks_, static_cast<std::uint32_t>(packet.originalLength));
    appendPadded(blocks_, packet.bytes);
    endBlock(start);
    return flushIfFull();
}

PcapngWriter::Fault PcapngWriter::addCounts(std::uint32_t interface, std::int64_t time,
                                            std::uint64_t received, std::uint64_t dropped) {
    constexpr std::uint16_t kReceived = 4, kDropped = 5;
    if (fault_) return fault_;
    const std::size_t start = beginBlock(kInterfaceStatistics);
    append(blocks_, interface);
    appendTime(blocks_, time);
    appendOption(blocks_, kReceived, received);
    appendOption(blocks_, kDropped, dropped);
    endOptions(blocks_);
    endBlock(start);
    return flushIfFull();
}

PcapngWriter::Fault PcapngWriter::flushIfFull() {
    return blocks_.size() >= kMostInMemory ? flush() : std::nullopt;
}

PcapngWriter::Fault PcapngWriter::flush() {
    std::size_t written = 0;
    while (!fault_ && written < blocks_.size()) {
        const ssize_t count =
            ::write(descriptor_, blocks_.data() + written, blocks_.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return fail(errno, written);
        written += static_cast<std::size_t>(count);
    }
    blocks_.clear();
    ends_.clear();
    return fault_;
}

// Takes the part of a block from the file's end. A pipe keeps it.
PcapngWriter::Fault PcapngWriter::fail(int error, std::size_t written) {
    const auto next = std::ranges::upper_bound(ends_, written);
    const std::size_t part = written - (next == ends_.begin() ? 0 : *std::prev(next));
    const off_t end = isOwned_ ? ::lseek(descriptor_, 0, SEEK_CUR) : -1;
    if (end >= 0) static_cast<void>(!::ftruncate(descriptor_, end - static_cast<off_t>(part)));
    blocks_.clear();
    ends_.clear();
    fault_ = name_ + ": " + std::generic_category().message(error);
    return fault_;
}

}  // namespace halvane::tool
