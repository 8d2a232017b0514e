#include "tools/halvane/report/source_hash.h"

#include <array>
#include <cstdint>
#include <nettle/base64.h>
#include <nettle/sha2.h>

namespace halvane::tool {

std::string sourceHash(std::string_view text) {
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, text.size(), reinterpret_cast<const std::uint8_t*>(text.data()));
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&context, digest.size(), digest.data());
    std::array<char, BASE64_ENCODE_RAW_LENGTH(SHA256_DIGEST_SIZE)> encoded{};
    base64_encode_raw(encoded.data(), digest.size(), digest.data());
    return "sha256-" + std::string(encoded.data(), encoded.size());
}

}  // namespace halvane::tool
