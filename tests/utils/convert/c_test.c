/* The conversions as a C program calls them. */
#include <stdlib.h>
#include <string.h>

#include "halvane/utils/convert.h"

#include "tests/support/check_line.h"

int firstFailingLineOfConvertFromC(void);

static int checkAddresses(void) {
    uint32_t address = 0;
    uint32_t mask = 0;
    uint32_t router = 0;
    int port = 0;
    char text[kIPv6AddressTextSize];
    CHECK(StringToIPv4Address("10.0.1.5:8080/24", 0, &address, &port, &mask, &router, NULL) ==
          kStatusOK);
    CHECK(address == 0x0A000105 && port == 8080 && mask == 0xFFFFFF00 && router == 0x0A000101);
    CHECK(strcmp(IPv4AddressToCString(address, port, text), "10.0.1.5:8080") == 0);

    uint8_t bytes[kIPv6AddressSize];
    CHECK(ParseIPv4Address("1.2.3.4", bytes, NULL) == kStatusOK && bytes[3] == 4);
    CHECK(StringToIPv6Address("[2001:db8::1]:443", kIPv6AddressFlagNoScope, bytes, NULL, NULL,
                              &port, NULL) == kStatusOK);
    CHECK(strcmp(IPv6AddressToCString(bytes, 0, port, text), "[2001:db8::1]:443") == 0);

    char hardware[HALVANE_HARDWARE_ADDRESS_TEXT_SIZE(6)];
    CHECK(TextToHardwareAddress("0:1a:2b:3c:4d:5e", SIZE_MAX, 6, bytes) == kStatusOK);
    CHECK(strcmp(HardwareAddressToCString(bytes, 6, hardware), "00:1A:2B:3C:4D:5E") == 0);
    CHECK(TextToHardwareAddressScalar(hardware, SIZE_MAX, 6) == 0x001A2B3C4D5E);
    return 0;
}

static int checkBytes(void) {
    uint8_t bytes[4] = {9, 9, 9, 9};
    size_t written = 0;
    CHECK(HexToData("0x1234 5", SIZE_MAX, kHexToDataFlagSkipSpace | kHexToDataFlagZeroFill, bytes,
                    sizeof(bytes), &written, NULL, NULL) == kStatusOK);
    CHECK(written == 3 && memcmp(bytes, "\x12\x34\x50\0", 4) == 0);
    char text[HALVANE_HEX_TEXT_SIZE(4)];
    CHECK(strcmp(DataToHexCStringEx(bytes, 4, text, kHexDigitsLowercase), "12345000") == 0);
    uint8_t* copy = NULL;
    CHECK(HexTextToDataCopy("12-34", SIZE_MAX, &copy, &written) == kStatusOK && written == 2);
    free(copy);
    MemReverse(bytes, 4);
    CHECK(memcmp(bytes, "\0\x50\x34\x12", 4) == 0);
    CHECK(RandomBytes(bytes, sizeof(bytes)) == kStatusOK);

    uint8_t uuid[kUUIDSize];
    char uuidText[kUUIDTextSize];
    const char* const expected = "6ba7b810-9dad-11d1-80b4-00c04fd430c8";
    CHECK(StringToUUID(expected, SIZE_MAX, true, uuid) == kStatusOK && uuid[0] == 0x10);
    CHECK(strcmp(UUIDtoCString(uuid, true, uuidText), expected) == 0);
    return 0;
}

static int checkNumbers(void) {
    char text[kBitListTextSize];
    uint32_t bits = 0;
    CHECK(strcmp(BitListString_Make(0x15, text, NULL), "0,2,4") == 0);
    CHECK(BitListString_Parse(text, SIZE_MAX, &bits) == kStatusOK && bits == 0x15);
    CHECK(strcmp(NumVersionToCString(0x01236004, text), "1.2.3b4") == 0);
    CHECK(TextToNumVersion(text, SIZE_MAX) == 0x01236004);
    CHECK(strcmp(SourceVersionToCString(20100, text), "2.1") == 0);
    CHECK(TextToSourceVersion(text, SIZE_MAX) == 20100);
    CHECK(strcmp(FourCharCodeToCString(0x61626364, text), "abcd") == 0);
    CHECK(TextToFourCharCode("ab", SIZE_MAX) == 0x61622020);
    CHECK(BCDTextFromInt(99, text, sizeof(text)) == kStatusOK && strcmp(text, "153") == 0);
    CHECK(BCDTextToInt(text, SIZE_MAX, NULL) == 99 && kBCDMax == 9999999999999999);
    CHECK(TextToInt32("-0x10", SIZE_MAX, 10) == -16);
    CHECK(gcd64(12, 18) == 6 && iceil2(5) == 8 && isin(kSineFullTurn / 4) == kSineOne);
    const double values[] = {3, 1, 2};
    CHECK(TorbenMedian(values, 3) == 2);
    CHECK(strlen(RandomString(3, 5, text)) >= 3);
    return 0;
}

int firstFailingLineOfConvertFromC(void) {
    int line = checkAddresses();
    if (line == 0) line = checkBytes();
    return line != 0 ? line : checkNumbers();
}
