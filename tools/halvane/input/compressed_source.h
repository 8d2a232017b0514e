// What the decompressors have in common: compressed octets come in chunks, and a fault comes after
// the octets before it.
//
// A source belongs to one thread at a time.
#ifndef TOOLS_HALVANE_INPUT_COMPRESSED_SOURCE_H
#define TOOLS_HALVANE_INPUT_COMPRESSED_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvane/input/octet_source.h"

namespace halvane::tool {

class CompressedSource : public OctetSource {
  public:
    explicit CompressedSource(std::unique_ptr<OctetSource> source) : source_(std::move(source)) {}

    Result<std::size_t, std::string> read(std::span<std::uint8_t> room) final {
        if (fault_) return Unexpected(*fault_);
        const std::size_t count = decompress(room);
        if (count == 0 && fault_) return Unexpected(*fault_);
        return count;
    }

    std::uint64_t fileOffset() const final { return source_->fileOffset(); }

  protected:
    // Writes decompressed octets into `room`, and returns how many: none only at the end. Calls
    // fail() if that is an early one.
    virtual std::size_t decompress(std::span<std::uint8_t> room) = 0;

    void fail(const std::string& text) { fault_ = "the compressed data is damaged: " + text; }
    void failWith(const std::string& text) { fault_ = text; }
    // There is no decompressor, because of the library's problem, or for lack of memory.
    void failToBegin(const char* problem) {
        failWith(problem ? std::string("cannot be decompressed: ") + problem
                         : "not enough memory to decompress");
    }

    // Returns the next compressed octets, valid until the next call. None at the end, and on a read
    // error, which is the fault then.
    std::span<const std::uint8_t> nextChunk() {
        chunk_.resize(std::size_t{64} << 10);
        const auto count = source_->read(chunk_);
        if (!count) fault_ = count.error();
        return std::span<const std::uint8_t>(chunk_).first(count ? *count : 0);
    }

    const std::optional<std::string>& fault() const { return fault_; }

  private:
    std::unique_ptr<OctetSource> source_;
    std::vector<std::uint8_t> chunk_;
    std::optional<std::string> fault_;
};

}  // namespace halvane::tool

#endif
