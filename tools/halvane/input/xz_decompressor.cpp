// xz, by liblzma.
#include <cstddef>
#include <cstdint>
#include <lzma.h>
#include <memory>
#include <span>
#include <utility>

#include "tools/halvane/input/compressed_source.h"
#include "tools/halvane/input/decompressor.h"
#include "tools/halvane/input/liblzma.h"
#include "tools/halvane/input/octet_source.h"

namespace halvane::tool {

namespace {

// Four times what the highest preset of xz needs.
constexpr std::uint64_t kMostMemory = std::uint64_t{256} << 20;

class XzDecompressor : public CompressedSource {
  public:
    explicit XzDecompressor(std::unique_ptr<OctetSource> source)
        : CompressedSource(std::move(source)) {
        if (liblzma().problem ||
            liblzma().lzma_stream_decoder(&stream_, kMostMemory, LZMA_CONCATENATED) != LZMA_OK) {
            failToBegin(liblzma().problem);
        }
    }
    XzDecompressor(const XzDecompressor&) = delete;
    XzDecompressor& operator=(const XzDecompressor&) = delete;
    ~XzDecompressor() override { liblzma().lzma_end(&stream_); }

  protected:
    std::size_t decompress(std::span<std::uint8_t> room) override {
        stream_.next_out = room.data();
        stream_.avail_out = room.size();
        while (stream_.avail_out == room.size() && !fault() && !isAtEnd_) step();
        return room.size() - stream_.avail_out;
    }

  private:
    void step() {
        if (stream_.avail_in == 0 && !isInputAtEnd_) {
            const auto chunk = nextChunk();
            if (fault()) return;
            stream_.next_in = chunk.data();
            stream_.avail_in = chunk.size();
            isInputAtEnd_ = chunk.empty();
        }
        const lzma_ret outcome =
            liblzma().lzma_code(&stream_, isInputAtEnd_ ? LZMA_FINISH : LZMA_RUN);
        isAtEnd_ = outcome == LZMA_STREAM_END;
        if (outcome != LZMA_OK && !isAtEnd_) tellFault(outcome);
    }

    void tellFault(lzma_ret outcome) {
        switch (outcome) {
            case LZMA_BUF_ERROR:
                return fail("it ends before its end");
            case LZMA_MEMLIMIT_ERROR:
                return failWith("needs more than 256 MiB of memory to decompress");
            case LZMA_MEM_ERROR:
                return failWith("not enough memory to decompress");
            case LZMA_OPTIONS_ERROR:
                return failWith("is compressed by a filter of xz that is not known");
            default:
                return fail("its octets contradict each other");
        }
    }

    lzma_stream stream_ = LZMA_STREAM_INIT;
    bool isInputAtEnd_ = false;
    bool isAtEnd_ = false;
};

}  // namespace

std::unique_ptr<OctetSource> createXzDecompressor(std::unique_ptr<OctetSource> source) {
    return std::make_unique<XzDecompressor>(std::move(source));
}

}  // namespace halvane::tool
