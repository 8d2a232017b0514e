// Elements as %{ie} prints them: every ID and, for vendor elements, every vendor that the text
// knows. Every element has its line, and the text reports an element that is cut short.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/oui.h"
#include "halvane/base/vendor.h"
#include "halvane/utils/printf.h"

#include "fuzz/byte_source.h"
#include "fuzz/printed.h"
#include "fuzz/require.h"

using halvane::fuzzing::printed;

namespace {

using Bytes = std::vector<std::uint8_t>;

// An exactly sized copy, `shift` bytes off the alignment of the heap.
std::string printedFrom(const Bytes& elements, std::size_t shift) {
    Bytes copy(shift + elements.size());
    std::copy(elements.begin(), elements.end(), copy.begin() + static_cast<std::ptrdiff_t>(shift));
    return printed("%{ie}", copy.data() + shift, elements.size());
}

Bytes bodyFrom(halvane::fuzzing::ByteSource& source, std::uint8_t id) {
    static constexpr std::uint8_t kTypes[] = {1, 3, 4, 5, 0, 255};
    Bytes body;
    if (id == 221) {
        const halvane::OUI* const vendors[] = {&halvane::kVendorGeneralOUI, &halvane::kVendorOUI,
                                               &halvane::kWPAOUI};
        const halvane::OUI& oui = *source.oneOf(vendors);
        body.assign(oui.begin(), oui.end());
        body.push_back(source.oneOf(kTypes));
        if (source.below(4) == 3) body.resize(source.below(5));
    }
    const auto rest = source.bytes(200);
    body.insert(body.end(), rest.begin(), rest.end());
    return body;
}

void checkElement(std::uint8_t id, const Bytes& body) {
    Bytes element = {id, static_cast<std::uint8_t>(body.size())};
    element.insert(element.end(), body.begin(), body.end());
    const std::string text = printedFrom(element, 0);
    REQUIRE(text.size() >= 4 && text.size() <= 400 + 40 * body.size());
    for (std::size_t shift = 1; shift < 4; ++shift) REQUIRE(printedFrom(element, shift) == text);
    if (id == 221 && body.size() < 4) {
        const int size = static_cast<int>(body.size());
        REQUIRE(text == printed("### bad vendor IE:\n%2.1H\n", body.data(), size, size));
    } else if (!text.starts_with("###")) {
        REQUIRE(std::stoi(text) == id);
    }
    // Without its last byte.
    element.pop_back();
    REQUIRE(printedFrom(element, 0).find("### bad IE") == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr std::uint8_t kIDs[] = {221, 221, 221, 0, 1, 3, 50, 48, 255};
    halvane::fuzzing::ByteSource source(data, size);
    Bytes all;
    while (!source.empty()) {
        const std::uint8_t id = source.oneOf(kIDs);
        const Bytes body = bodyFrom(source, id);
        checkElement(id, body);
        all.push_back(id);
        all.push_back(static_cast<std::uint8_t>(body.size()));
        all.insert(all.end(), body.begin(), body.end());
    }
    REQUIRE(printedFrom(all, 1) == printedFrom(all, 0));
    REQUIRE(printed("%3{ie}", data, size).size() <= 400 + 200 * size);
    return 0;
}
