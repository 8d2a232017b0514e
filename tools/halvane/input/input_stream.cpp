#include "tools/halvane/input/input_stream.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace halvane::tool {

namespace {

constexpr std::size_t kWindow = std::size_t{256} << 10;

constexpr int kMostCompressions = 4;  // one in another

// Octets that were read already, and then those of the source.
class BegunSource : public OctetSource {
  public:
    BegunSource(std::vector<std::uint8_t> begun, std::unique_ptr<OctetSource> source)
        : begun_(std::move(begun)), source_(std::move(source)) {}

    Result<std::size_t, std::string> read(std::span<std::uint8_t> room) override {
        const auto left = std::span(begun_).subspan(taken_);
        if (left.empty()) return source_->read(room);
        const auto part = left.first(std::min(left.size(), room.size()));
        std::ranges::copy(part, room.begin());
        taken_ += part.size();
        return part.size();
    }

    std::uint64_t fileOffset() const override { return source_->fileOffset(); }

  private:
    std::vector<std::uint8_t> begun_;
    std::size_t taken_ = 0;
    std::unique_ptr<OctetSource> source_;
};

std::optional<std::uint64_t> sizeOfRegularFile(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

}  // namespace

InputStream::InputStream(std::unique_ptr<OctetSource> source, std::optional<std::uint64_t> fileSize)
    : source_(std::move(source)), fileSize_(fileSize), window_(kWindow) {}

Result<InputStream, std::string> InputStream::open(const std::string& path) {
    const int descriptor =
        path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) return Unexpected(std::generic_category().message(errno));

    InputStream stream(createDescriptorSource(descriptor), sizeOfRegularFile(descriptor));
    for (int depth = 0; depth < kMostCompressions; ++depth) {
        const auto make = decompressorOf(stream.peek(kCompressionMagicSize));
        if (make == nullptr) break;
        stream.decompress(make);
    }
    stream.peek(1);
    if (stream.unread() == 0) return Unexpected(stream.error_.value_or("the file is empty"));
    return stream;
}

// Reads the source anew, through a decompressor.
void InputStream::decompress(MakeDecompressor make) {
    const auto begun = std::span(window_).subspan(start_, unread());
    source_ = make(std::make_unique<BegunSource>(
        std::vector<std::uint8_t>(begun.begin(), begun.end()), std::move(source_)));
    start_ = end_ = 0;
    isAtEnd_ = false;
    isCompressed_ = true;
}

std::span<const std::uint8_t> InputStream::peek(std::size_t count) {
    if (unread() < count && !isAtEnd_) fill(count);
    return std::span<const std::uint8_t>(window_).subspan(start_, unread());
}

// Reads until `count` octets are unread, or the source is at its end.
void InputStream::fill(std::size_t count) {
    const auto unreadOctets = std::span(window_).subspan(start_, unread());
    std::ranges::copy(unreadOctets, window_.begin());
    end_ = unreadOctets.size();
    start_ = 0;
    if (count > window_.size()) window_.resize(std::max(count, 2 * window_.size()));
    while (end_ < count && !isAtEnd_) {
        const auto read = source_->read(std::span(window_).subspan(end_));
        if (!read) error_ = read.error();
        isAtEnd_ = !read || *read == 0;
        if (read) end_ += *read;
    }
}

void InputStream::consume(std::size_t count) {
    start_ += count;
    position_ += count;
}

std::uint64_t InputStream::skip(std::uint64_t count) {
    std::uint64_t skipped = 0;
    while (skipped < count && !peek(1).empty()) {
        const std::size_t step =
            static_cast<std::size_t>(std::min<std::uint64_t>(count - skipped, unread()));
        consume(step);
        skipped += step;
    }
    return skipped;
}

std::uint64_t InputStream::fileOffset() const {
    return isCompressed_ ? source_->fileOffset() : position_;
}

}  // namespace halvane::tool
