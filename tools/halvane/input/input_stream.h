// The octets of a file or of standard input, from front to back, decompressed where they are
// compressed.
//
// gzip, bzip2, xz, zstd and lz4, also one in another. The first octets tell which; a file name
// never does. Memory does not grow with the input, whatever it expands to.
// A stream belongs to one thread at a time; distinct streams are independent.
#ifndef TOOLS_HALVANE_INPUT_INPUT_STREAM_H
#define TOOLS_HALVANE_INPUT_INPUT_STREAM_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvane/input/decompressor.h"
#include "tools/halvane/input/octet_source.h"

namespace halvane::tool {

class InputStream {
  public:
    // Opens a file; "-" is standard input, which stays open. An error is the text of the fault,
    // without the file's name: the file cannot be opened or read, is a directory, or is empty.
    static Result<InputStream, std::string> open(const std::string& path);

    // Returns the next `count` octets or more, or all that are left if they are fewer. They stay
    // unread. The span is valid until the next call of peek().
    std::span<const std::uint8_t> peek(std::size_t count);

    // Takes octets off the front. REQUIRES: the last peek() returned as many.
    void consume(std::size_t count);

    // Takes `count` octets off the front without keeping them. Returns how many there were.
    std::uint64_t skip(std::uint64_t count);

    // The number of octets, after decompression, that were taken off the front.
    std::uint64_t position() const { return position_; }

    // The fault that ended the stream early. Absent if there was none, or none yet.
    const std::optional<std::string>& error() const { return error_; }

    bool isCompressed() const { return isCompressed_; }

    // Octets of the file itself, for showing progress. Only a regular file has a size.
    std::uint64_t fileOffset() const;
    std::optional<std::uint64_t> fileSize() const { return fileSize_; }

  private:
    InputStream(std::unique_ptr<OctetSource> source, std::optional<std::uint64_t> fileSize);

    std::size_t unread() const { return end_ - start_; }
    void fill(std::size_t count);
    void decompress(MakeDecompressor make);

    std::unique_ptr<OctetSource> source_;
    std::optional<std::uint64_t> fileSize_;
    std::vector<std::uint8_t> window_;
    std::size_t start_ = 0;  // of the unread octets in the window
    std::size_t end_ = 0;
    std::uint64_t position_ = 0;
    std::optional<std::string> error_;
    bool isAtEnd_ = false;
    bool isCompressed_ = false;
};

}  // namespace halvane::tool

#endif
