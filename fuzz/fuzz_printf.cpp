// Elements, TXT records and DNS names of any bytes: a short buffer holds the whole text with bytes
// left out.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "halvane/utils/printf.h"

#include "fuzz/require.h"

namespace {

bool isWithin(const char* part, std::size_t size, const std::vector<char>& whole) {
    std::size_t found = 0;
    for (std::size_t i = 0; i < whole.size() && found < size; ++i) found += whole[i] == part[found];
    return found == size;
}

template <typename... Arguments>
void checkShortBuffers(const char* format, Arguments... arguments) {
    const int length = SNPrintF(nullptr, 0, format, arguments...);
    REQUIRE(length >= 0);
    const auto total = static_cast<std::size_t>(length);
    std::vector<char> whole(total + 1);
    REQUIRE(SNPrintF(whole.data(), whole.size(), format, arguments...) == length);
    REQUIRE(whole[total] == '\0');
    for (const std::size_t size : {std::size_t{1}, total / 2 + 1, total}) {
        if (size == 0) continue;
        std::vector<char> part(size);
        REQUIRE(SNPrintF(part.data(), size, format, arguments...) == length);
        const std::size_t stored = ::strnlen(part.data(), size);
        REQUIRE(stored < size);
        REQUIRE(isWithin(part.data(), stored, whole));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    checkShortBuffers("%{ie}", data, size);
    checkShortBuffers("%2{txt}", data, size);
    checkShortBuffers("%.2H", data, static_cast<int>(size), static_cast<int>(size / 2));
    // A DNS name and a C string have no length: they end in a zero.
    std::vector<std::uint8_t> terminated(data, data + size);
    terminated.insert(terminated.end(), 65, 0);
    checkShortBuffers("%##s", terminated.data());
    checkShortBuffers("%s", reinterpret_cast<const char*>(terminated.data()));
    return 0;
}
