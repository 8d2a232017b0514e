// Conversions beside peers: IPv6 addresses beside inet_ntop and inet_pton, hexadecimal text beside
// plain loops over a table.
#include <arpa/inet.h>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/socket.h>
#include <vector>

#include "halvane/base/hex_digits.h"
#include "halvane/base/status.h"
#include "halvane/utils/convert.h"

namespace {

// --- IPv6 addresses ---

constexpr std::array<std::uint8_t, 16> kAddress = {0x20, 0x01, 0x0D, 0xB8, 0x85, 0xA3, 0,    0,
                                                   0,    0,    0x8A, 0x2E, 0x03, 0x70, 0x73, 0x34};
constexpr char kAddressText[] = "2001:db8:85a3::8a2e:370:7334";

template <typename Print>
void measurePrinting(benchmark::State& state, Print print) {
    char text[kIPv6AddressTextSize];
    print(text);
    if (std::strcmp(text, kAddressText) != 0) std::abort();
    for (auto _ : state) {
        print(text);
        benchmark::DoNotOptimize(text);
    }
}

template <typename Read>
void measureReading(benchmark::State& state, Read read) {
    std::array<std::uint8_t, 16> address{};
    if (!read(address.data()) || address != kAddress) std::abort();
    for (auto _ : state) {
        read(address.data());
        benchmark::DoNotOptimize(address);
    }
}

void printAddressIPv6AddressToCString(benchmark::State& state) {
    measurePrinting(state, [](char* text) { IPv6AddressToCString(kAddress.data(), 0, 0, text); });
}

void printAddressInetNtop(benchmark::State& state) {
    measurePrinting(state, [](char* text) {
        inet_ntop(AF_INET6, kAddress.data(), text, kIPv6AddressTextSize);
    });
}

void readAddressStringToIPv6Address(benchmark::State& state) {
    measureReading(state, [](std::uint8_t* address) {
        return StringToIPv6Address(kAddressText, 0, address, nullptr, nullptr, nullptr, nullptr) ==
               kStatusOK;
    });
}

void readAddressInetPton(benchmark::State& state) {
    measureReading(state, [](std::uint8_t* address) {
        return inet_pton(AF_INET6, kAddressText, address) == 1;
    });
}

// --- Hexadecimal text ---

std::vector<std::uint8_t> someBytes(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    std::uint32_t state = 1;
    for (auto& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return bytes;
}

// A plain loop with a look-up for each digit. It is not inlined, just as our function is not.
[[gnu::noinline]] void plainToText(const std::uint8_t* bytes, std::size_t count, char* text) {
    constexpr char kDigits[] = kHexDigitsLowercase;
    for (std::size_t i = 0; i < count; ++i) {
        *text++ = kDigits[bytes[i] >> 4];
        *text++ = kDigits[bytes[i] & 0x0F];
    }
    *text = '\0';
}

constexpr auto kValues = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::int8_t i = 0; i < 10; ++i) values[static_cast<std::size_t>('0' + i)] = i;
    for (std::int8_t i = 0; i < 6; ++i) {
        values[static_cast<std::size_t>('a' + i)] = static_cast<std::int8_t>(10 + i);
        values[static_cast<std::size_t>('A' + i)] = static_cast<std::int8_t>(10 + i);
    }
    return values;
}();

[[gnu::noinline]] std::size_t plainFromText(const char* text, std::size_t length,
                                            std::uint8_t* bytes) {
    std::size_t count = 0;
    for (std::size_t i = 0; i + 1 < length; i += 2) {
        const int high = kValues[static_cast<unsigned char>(text[i])];
        const int low = kValues[static_cast<unsigned char>(text[i + 1])];
        if ((high | low) < 0) break;
        bytes[count++] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return count;
}

// The rate counts the bytes of the data, not of its text.
void setRate(benchmark::State& state, std::size_t size) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

template <typename ToText>
void measureToText(benchmark::State& state, ToText toText) {
    const auto bytes = someBytes(static_cast<std::size_t>(state.range(0)));
    std::string expected(2 * bytes.size() + 1, '?');
    plainToText(bytes.data(), bytes.size(), expected.data());
    std::string text(expected.size(), '?');
    toText(bytes, text.data());
    if (text != expected) std::abort();
    for (auto _ : state) {
        toText(bytes, text.data());
        benchmark::DoNotOptimize(text.data());
        benchmark::ClobberMemory();
    }
    setRate(state, bytes.size());
}

template <typename FromText>
void measureFromText(benchmark::State& state, FromText fromText) {
    const auto expected = someBytes(static_cast<std::size_t>(state.range(0)));
    std::string text(2 * expected.size() + 1, '?');
    plainToText(expected.data(), expected.size(), text.data());
    text.pop_back();
    std::vector<std::uint8_t> bytes(expected.size());
    if (fromText(text, bytes) != expected.size() || bytes != expected) std::abort();
    for (auto _ : state) {
        benchmark::DoNotOptimize(fromText(text, bytes));
        benchmark::DoNotOptimize(bytes.data());
        benchmark::ClobberMemory();
    }
    setRate(state, bytes.size());
}

void toHexDataToHexCStringEx(benchmark::State& state) {
    measureToText(state, [](const auto& bytes, char* text) {
        DataToHexCStringEx(bytes.data(), bytes.size(), text, kHexDigitsLowercase);
    });
}

void toHexPlainLoop(benchmark::State& state) {
    measureToText(state, [](const auto& bytes, char* text) {
        plainToText(bytes.data(), bytes.size(), text);
    });
}

void fromHexHexToData(benchmark::State& state) {
    measureFromText(state, [](const auto& text, auto& bytes) {
        std::size_t written = 0;
        HexToData(text.data(), text.size(), 0, bytes.data(), bytes.size(), &written, nullptr,
                  nullptr);
        return written;
    });
}

void fromHexPlainLoop(benchmark::State& state) {
    measureFromText(state, [](const auto& text, auto& bytes) {
        return plainFromText(text.data(), text.size(), bytes.data());
    });
}

BENCHMARK(printAddressIPv6AddressToCString);
BENCHMARK(printAddressInetNtop);
BENCHMARK(readAddressStringToIPv6Address);
BENCHMARK(readAddressInetPton);
BENCHMARK(toHexDataToHexCStringEx)->Arg(6)->Arg(4096);
BENCHMARK(toHexPlainLoop)->Arg(6)->Arg(4096);
BENCHMARK(fromHexHexToData)->Arg(6)->Arg(4096);
BENCHMARK(fromHexPlainLoop)->Arg(6)->Arg(4096);

}  // namespace

BENCHMARK_MAIN();
