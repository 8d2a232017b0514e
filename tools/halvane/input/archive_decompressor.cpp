// bzip2, zstd and lz4, by libarchive.
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "tools/halvane/input/compressed_source.h"
#include "tools/halvane/input/decompressor.h"
#include "tools/halvane/input/libarchive.h"
#include "tools/halvane/input/octet_source.h"

namespace halvane::tool {

namespace {

// What libzstd says of a frame that refers to octets more than 128 MiB before.
constexpr std::string_view kAboveLimit = "Frame requires too much memory for decoding";

struct ArchiveCloser {
    void operator()(struct archive* reader) const { libarchive().archive_read_free(reader); }
};

class ArchiveDecompressor : public CompressedSource {
  public:
    explicit ArchiveDecompressor(std::unique_ptr<OctetSource> source)
        : CompressedSource(std::move(source)), reader_(libarchive().archive_read_new()) {
        if (!reader_) {
            failToBegin(libarchive().problem);
            return;
        }
        libarchive().archive_read_support_filter_bzip2(reader_.get());
        libarchive().archive_read_support_filter_zstd(reader_.get());
        libarchive().archive_read_support_filter_lz4(reader_.get());
        libarchive().archive_read_support_format_empty(reader_.get());
        libarchive().archive_read_support_format_raw(reader_.get());
    }

  protected:
    std::size_t decompress(std::span<std::uint8_t> room) override {
        if (!isOpen_) open();
        if (fault() || isAtEnd_) return 0;
        const la_ssize_t count =
            libarchive().archive_read_data(reader_.get(), room.data(), room.size());
        if (count < 0) tellFault();
        return count < 0 ? 0 : static_cast<std::size_t>(count);
    }

  private:
    void open() {
        isOpen_ = true;
        struct archive_entry* entry = nullptr;
        if (libarchive().archive_read_open(reader_.get(), this, nullptr, provide, nullptr) !=
            ARCHIVE_OK) {
            tellFault();
        } else if (libarchive().archive_filter_code(reader_.get(), 0) == ARCHIVE_FILTER_NONE) {
            fail("it ends inside its header");  // or is none of these after all
        } else {
            const int outcome = libarchive().archive_read_next_header(reader_.get(), &entry);
            isAtEnd_ = outcome == ARCHIVE_EOF;  // nothing was compressed
            if (!isAtEnd_ && outcome != ARCHIVE_OK) tellFault();
        }
    }

    void tellFault() {
        if (fault()) return;  // the source's own
        const char* const text = libarchive().archive_error_string(reader_.get());
        const std::string_view reason = text ? text : "libarchive does not tell more";
        if (reason.ends_with(kAboveLimit)) {
            failWith("needs more than 128 MiB of memory to decompress");
        } else {
            fail(std::string(reason));
        }
    }

    static la_ssize_t provide(struct archive* reader, void* context, const void** octets) {
        auto& self = *static_cast<ArchiveDecompressor*>(context);
        const auto chunk = self.nextChunk();
        *octets = chunk.data();
        if (!self.fault()) return static_cast<la_ssize_t>(chunk.size());
        libarchive().archive_set_error(reader, EIO, "%s", self.fault()->c_str());
        return -1;
    }

    std::unique_ptr<struct archive, ArchiveCloser> reader_;
    bool isOpen_ = false;
    bool isAtEnd_ = false;
};

}  // namespace

std::unique_ptr<OctetSource> createArchiveDecompressor(std::unique_ptr<OctetSource> source) {
    return std::make_unique<ArchiveDecompressor>(std::move(source));
}

}  // namespace halvane::tool
