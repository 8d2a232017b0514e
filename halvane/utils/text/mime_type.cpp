#include "halvane/utils/text/mime_type.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "halvane/utils/text/compare.h"

namespace {

struct MediaType {
    const char* type;  // in lower case
    const char* extension;
};

constexpr bool isBefore(const char* a, const char* b) {
    return std::string_view(a) < b;
}

constexpr std::array<MediaType, 16> kMediaTypes = {{
    {"audio/mpeg", "mp3"},
    {"audio/x-aiff", "aiff"},
    {"audio/x-m4a", "m4a"},
    {"audio/x-m4p", "m4p"},
    {"audio/x-wav", "wav"},
    {"image/bmp", "bmp"},
    {"image/gif", "gif"},
    {"image/jp2", "jp2"},
    {"image/jpeg", "jpg"},
    {"image/none", ""},
    {"image/pict", "pict"},
    {"image/png", "png"},
    {"image/tiff", "tiff"},
    {"video/mp4", "mp4"},
    {"video/quicktime", "mov"},
    {"video/x-m4v", "m4v"},
}};
static_assert(std::ranges::is_sorted(kMediaTypes, isBefore, &MediaType::type));

}  // namespace

const char* MIMETypeToExtension(const char* type) {
    const auto isLess = [](const char* a, const char* b) { return strnicmpx(a, SIZE_MAX, b) < 0; };
    const auto row = std::ranges::lower_bound(kMediaTypes, type, isLess, &MediaType::type);
    const bool isKnown = row != kMediaTypes.end() && strnicmpx(type, SIZE_MAX, row->type) == 0;
    return isKnown ? row->extension : "";
}

const char* GetFileExtensionFromString(const char* text) {
    const char* const dot = std::strrchr(text, '.');
    return dot != nullptr ? dot + 1 : text + std::strlen(text);
}
