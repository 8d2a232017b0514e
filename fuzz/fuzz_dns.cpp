// DNS names in wire form agree with naive code at every precision, and the code reads nothing after
// the end of a name. TXT records are bounded.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/printf.h"

#include "fuzz/byte_source.h"
#include "fuzz/printed.h"
#include "fuzz/require.h"

using halvane::fuzzing::printed;

namespace {

using Bytes = std::vector<std::uint8_t>;

// Labels of 0 to 63 bytes, up to the first empty one, within the 255 bytes of a name.
struct Name {
    Bytes wire;
    std::string text;
};

Name nameFrom(halvane::fuzzing::ByteSource& source) {
    Name name;
    for (;;) {
        const auto label = source.bytes(63);
        if (label.empty() || name.wire.size() + label.size() + 2 > 255) break;
        name.wire.push_back(static_cast<std::uint8_t>(label.size()));
        name.wire.insert(name.wire.end(), label.begin(), label.end());
        name.text.append(label.begin(), label.end()).append(".");
    }
    name.wire.push_back(0);
    if (name.text.empty()) name.text = ".";
    return name;
}

bool isASCII(const std::string& text) {
    for (const char character : text) {
        if (character < 0) return false;
    }
    return true;
}

void checkName(const Name& name) {
    const std::string text = printed("%##s", name.wire.data());
    REQUIRE(text == name.text);
    if (!isASCII(text)) return;  // a precision cuts between characters
    for (std::size_t size = 0; size <= text.size(); ++size) {
        // All bytes that a precision of that size may read.
        const Bytes part(
            name.wire.begin(),
            name.wire.begin() + static_cast<std::ptrdiff_t>(std::min(size + 1, name.wire.size())));
        REQUIRE(printed("%##.*s", static_cast<int>(size), part.data()) == text.substr(0, size));
    }
}

void checkRecord(const std::uint8_t* data, std::size_t size) {
    const std::string text = printed("%{txt}", data, size);
    REQUIRE(text.size() <= 2 * size + 80);
    REQUIRE(!text.empty() && text.back() == '\n');
    const Bytes shifted(data, data + size);
    REQUIRE(printed("%{txt}", shifted.data(), size) == text);
}

// The items of a packed record, with a backslash before each byte that may have one.
void checkPacked(halvane::fuzzing::ByteSource& source) {
    const auto items = source.bytes(200);
    Bytes record = {0};
    for (const char character : std::string_view("waMA=")) {
        record.push_back(static_cast<std::uint8_t>(character));
    }
    record.insert(record.end(), items.begin(), items.end());
    record[0] = static_cast<std::uint8_t>(record.size() - 1 + (source.below(16) == 15 ? 1 : 0));
    checkRecord(record.data(), record.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    halvane::fuzzing::ByteSource source(data, size);
    checkName(nameFrom(source));
    checkPacked(source);
    checkRecord(data, size);
    // Any bytes as a name. A zero ends it at the latest.
    Bytes wire(data, data + size);
    wire.insert(wire.end(), 64, 0);
    REQUIRE(!printed("%##s", wire.data()).empty());
    return 0;
}
