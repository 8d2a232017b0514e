#include "tools/halvane/input/hex_input.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

// Far more than the text of any element buffer, whose length has 16 bits.
constexpr std::size_t kMaximumText = std::size_t{1} << 20;

struct FileCloser {
    void operator()(std::FILE* file) const {
        if (file != stdin) std::fclose(file);
    }
};

}  // namespace

Result<std::string, std::string> readTextFile(const std::string& path, const char* tooLong) {
    const bool isStandardInput = path == "-";
    const std::unique_ptr<std::FILE, FileCloser> file(
        isStandardInput ? stdin : std::fopen(path.c_str(), "re"));
    std::string text;
    std::array<char, 4096> part;
    std::size_t count = 0;
    while (file && text.size() <= kMaximumText &&
           (count = std::fread(part.data(), 1, part.size(), file.get())) > 0) {
        text.append(part.data(), count);
    }
    const auto fail = [&](const char* problem) {
        return Unexpected(inputName(path) + ": " + problem);
    };
    if (!file || std::ferror(file.get()) != 0) return fail(std::strerror(errno));
    if (text.size() > kMaximumText) return fail(tooLong);
    return text;
}

Result<ByteBuffer, std::string> readHexFile(const std::string& path) {
    const auto text = readTextFile(path);
    if (!text) return Unexpected(text.error());
    auto bytes = ByteBuffer::fromHex(*text);
    if (!bytes) return Unexpected(inputName(path) + ": not hexadecimal text (pairs of digits)");
    if (bytes->empty()) return Unexpected(inputName(path) + ": empty");
    return *std::move(bytes);
}

}  // namespace halvane::tool
