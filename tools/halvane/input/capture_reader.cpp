#include "tools/halvane/input/capture_reader.h"

#include <cerrno>
#include <cstdio>
#include <pcap/pcap.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <system_error>
#include <utility>

#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

constexpr std::array<const char*, capture::kSkipReasonCount> kSkipReasonNames = {
    "other frames", "fragments", "encrypted", "short", "damaged", "malformed radio headers",
};

struct FileCloser {
    void operator()(std::FILE* file) const {
        if (file != stdin) std::fclose(file);
    }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Independent of the locale, and safe with other threads.
std::string errorText(int code) {
    return std::generic_category().message(code);
}

std::optional<std::uint64_t> sizeOfRegularFile(std::FILE* file) {
    struct stat status {};
    if (::fstat(::fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

// Checks for a first byte, and leaves it unread. On a pipe only reading can tell. Returns the text
// of the fault, or absent.
std::optional<std::string> findNothingToRead(std::FILE* file) {
    const int first = std::fgetc(file);
    if (first != EOF) {
        std::ungetc(first, file);
        return std::nullopt;
    }
    return std::ferror(file) ? errorText(errno) : "the file is empty";
}

std::string notWiFiText(int linkType) {
    const char* name = pcap_datalink_val_to_name(linkType);
    const char* description = pcap_datalink_val_to_description(linkType);
    std::string text = "its frames are not 802.11, but of link type ";
    text += name ? name : std::to_string(linkType);
    if (description) text += std::string(" (") + description + ")";
    return text;
}

}  // namespace

void CaptureSummary::add(const capture::CapturedFrame& frame) {
    ++frames;
    if (const capture::BeaconFrame* beacon = frame.beacon()) {
        ++(beacon->subtype == capture::BeaconSubtype::Beacon ? beacons : probeResponses);
    } else {
        ++skipped.at(static_cast<std::size_t>(frame.content.error()));
    }
}

void CaptureSummary::add(const CaptureSummary& other) {
    frames += other.frames;
    beacons += other.beacons;
    probeResponses += other.probeResponses;
    for (std::size_t i = 0; i < capture::kSkipReasonCount; ++i)
        skipped.at(i) += other.skipped.at(i);
}

std::string CaptureSummary::text() const {
    std::string reasons;
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < capture::kSkipReasonCount; ++i) {
        if (skipped.at(i) == 0) continue;
        total += skipped.at(i);
        if (!reasons.empty()) reasons += ", ";
        reasons += std::string(kSkipReasonNames.at(i)) + ": " + std::to_string(skipped.at(i));
    }
    std::string line = "frames read: " + std::to_string(frames) +
                       ", beacons: " + std::to_string(beacons) +
                       ", probe responses: " + std::to_string(probeResponses) +
                       ", skipped: " + std::to_string(total);
    if (!reasons.empty()) line += " (" + reasons + ")";
    return line;
}

void CaptureReader::Closer::operator()(pcap* capture) const {
    pcap_close(capture);
}

CaptureReader::CaptureReader(Handle handle, capture::LinkType linkType, std::string name,
                             std::optional<std::uint64_t> fileSize)
    : handle_(std::move(handle)),
      linkType_(linkType),
      name_(std::move(name)),
      fileSize_(fileSize) {}

Result<CaptureReader, std::string> CaptureReader::open(const std::string& path) {
    const bool isStandardInput = path == "-";
    const std::string name = inputName(path);
    const auto fail = [&](const std::string& text) { return Unexpected(name + ": " + text); };

    File file(isStandardInput ? stdin : std::fopen(path.c_str(), "rbe"));
    if (!file) return fail(errorText(errno));
    if (const auto text = findNothingToRead(file.get())) return fail(*text);

    const auto size = sizeOfRegularFile(file.get());
    std::array<char, PCAP_ERRBUF_SIZE> reason{};
    Handle handle(pcap_fopen_offline(file.get(), reason.data()));
    if (!handle) return fail(std::string("not a readable capture: ") + reason.data());
    static_cast<void>(file.release());  // closed with the handle, standard input excepted

    const int number = pcap_datalink(handle.get());
    const auto linkType = capture::linkTypeOfNumber(number);
    if (!linkType) return fail(notWiFiText(number));
    return CaptureReader(std::move(handle), *linkType, name, size);
}

std::optional<CaptureReader::Frame> CaptureReader::next() {
    if (error_) return std::nullopt;
    pcap_pkthdr* header = nullptr;
    const u_char* bytes = nullptr;
    const int outcome = pcap_next_ex(handle_.get(), &header, &bytes);
    if (outcome == PCAP_ERROR) {
        error_ = name_ + ": cannot be read beyond frame " + std::to_string(summary_.frames) + ": " +
                 pcap_geterr(handle_.get());
    }
    if (outcome != 1) return std::nullopt;

    const Frame frame = {capture::examinePacket(linkType_, {bytes, header->caplen}, header->len),
                         summary_.frames + 1};
    summary_.add(frame);
    return frame;
}

std::uint64_t CaptureReader::bytesRead() const {
    const off_t position = ::ftello(pcap_file(handle_.get()));
    return position < 0 ? 0 : static_cast<std::uint64_t>(position);
}

}  // namespace halvane::tool
