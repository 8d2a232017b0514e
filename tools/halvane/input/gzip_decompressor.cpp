// gzip, by zlib.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <utility>
#include <zconf.h>
#include <zlib.h>

#include "tools/halvane/input/compressed_source.h"
#include "tools/halvane/input/decompressor.h"
#include "tools/halvane/input/octet_source.h"
#include "tools/halvane/input/zlib.h"

namespace halvane::tool {

namespace {

constexpr int kGzipWindow = 15 + 16;  // the largest window; 16 asks for gzip

class GzipDecompressor : public CompressedSource {
  public:
    explicit GzipDecompressor(std::unique_ptr<OctetSource> source)
        : CompressedSource(std::move(source)) {
        if (zlib().inflateInit2_(&stream_, kGzipWindow, ZLIB_VERSION, sizeof stream_) != Z_OK) {
            failToBegin(zlib().problem);
        }
    }
    GzipDecompressor(const GzipDecompressor&) = delete;
    GzipDecompressor& operator=(const GzipDecompressor&) = delete;
    ~GzipDecompressor() override { zlib().inflateEnd(&stream_); }

  protected:
    std::size_t decompress(std::span<std::uint8_t> room) override {
        const auto size =
            static_cast<uInt>(std::min<std::size_t>(room.size(), std::numeric_limits<uInt>::max()));
        stream_.next_out = room.data();
        stream_.avail_out = size;
        while (stream_.avail_out == size && !fault() && !isAtEnd_) step();
        return size - stream_.avail_out;
    }

  private:
    void step() {
        if (stream_.avail_in == 0 && !takeChunk()) {
            isAtEnd_ = isBetweenMembers_;
            if (!isAtEnd_ && !fault()) fail("it ends before its end");
            return;
        }
        if (isBetweenMembers_ && !beginMember()) return;
        const int outcome = zlib().inflate(&stream_, Z_NO_FLUSH);
        if (outcome == Z_STREAM_END) {
            isBetweenMembers_ = true;
        } else if (outcome != Z_OK && outcome != Z_BUF_ERROR) {
            fail(stream_.msg ? stream_.msg : "zlib does not tell more");
        }
    }

    bool takeChunk() {
        const auto chunk = nextChunk();
        // zlib does not write there.
        stream_.next_in = const_cast<Bytef*>(chunk.data());
        stream_.avail_in = static_cast<uInt>(chunk.size());
        return !chunk.empty();
    }

    // Another member begins as the first did. Files may end in zeros, and in anything else.
    bool beginMember() {
        isAtEnd_ = *stream_.next_in != 0x1F;
        if (!isAtEnd_) zlib().inflateReset(&stream_);
        isBetweenMembers_ = false;
        return !isAtEnd_;
    }

    z_stream stream_{};
    bool isBetweenMembers_ = false;
    bool isAtEnd_ = false;
};

}  // namespace

std::unique_ptr<OctetSource> createGzipDecompressor(std::unique_ptr<OctetSource> source) {
    return std::make_unique<GzipDecompressor>(std::move(source));
}

}  // namespace halvane::tool
