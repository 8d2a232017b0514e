#include "tools/halvane/input/octet_source.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace halvane::tool {

namespace {

class DescriptorSource : public OctetSource {
  public:
    explicit DescriptorSource(int descriptor) : descriptor_(descriptor) {}
    DescriptorSource(const DescriptorSource&) = delete;
    DescriptorSource& operator=(const DescriptorSource&) = delete;
    ~DescriptorSource() override {
        if (descriptor_ != STDIN_FILENO) ::close(descriptor_);
    }

    Result<std::size_t, std::string> read(std::span<std::uint8_t> room) override {
        ssize_t count = 0;
        do {
            count = ::read(descriptor_, room.data(), room.size());
        } while (count < 0 && errno == EINTR);
        // The category's text depends on no locale, and is safe with other threads.
        if (count < 0) return Unexpected(std::generic_category().message(errno));
        offset_ += static_cast<std::uint64_t>(count);
        return static_cast<std::size_t>(count);
    }

    std::uint64_t fileOffset() const override { return offset_; }

  private:
    int descriptor_;
    std::uint64_t offset_ = 0;
};

}  // namespace

std::unique_ptr<OctetSource> createDescriptorSource(int descriptor) {
    return std::make_unique<DescriptorSource>(descriptor);
}

}  // namespace halvane::tool
