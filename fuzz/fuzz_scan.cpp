// Any text under formats of every conversion: never reads past the stated length.
#include <cstdint>
#include <cstring>

#include "halvane/utils/scan_time.h"

#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const char* text = reinterpret_cast<const char*>(data);
    char word[32];
    char set[32];
    int number = 0;
    long long wide = 0;
    const char* place = nullptr;
    std::size_t length = 0;

    const int words = SNScanF(text, size, "%31s %31[a-z0-9]%n", word, set, &number);
    REQUIRE(words <= 3);
    SNScanF(text, size, "%i %lld %x %hho", &number, &wide, &number, word);
    if (SNScanF(text, size, "%&[^=]=%&#s", &place, &length, &place, &length) > 0) {
        REQUIRE(place >= text && place + length <= text + size);
    }
    return 0;
}
