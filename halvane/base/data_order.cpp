#include "halvane/base/data_order.h"

#include <algorithm>
#include <cstring>

namespace halvane::NSData_Halvane {

int compare(const ByteBuffer& buffer, const ByteBuffer& other) {
    const std::size_t common = std::min(buffer.size(), other.size());
    const int order = std::memcmp(buffer.bytes().data(), other.bytes().data(), common);
    return (order > 0) - (order < 0);
}

int compare(const ByteBuffer& buffer, const std::optional<ByteBuffer>& other) {
    return other ? compare(buffer, *other) : 1;
}

}  // namespace halvane::NSData_Halvane
