// The configuration of one network (BSS) that an interface hosts.
//
// A caller fills it from typed values or from option words, as a command line or a file gives them,
// and has it derive the key material. As its skeleton it travels to the daemon.
//
// Nothing is judged as a whole: a record may allow what does not go together. The operations that
// end in _error answer whether they succeeded. A failure stores an error of kDaemonErrorDomain,
// with a code of halvane/base/status.h, where there is a place for it; a success clears that place.
//
// A value type that holds secrets: the passphrase and the key are in its memory, its skeleton and
// its description. The operations that make them make buffers whose bytes are wiped when the last
// copy goes; other texts of them are the caller's to wipe. Used by one thread at a time; the
// class-level operations may be called from any.
#ifndef HALVANE_MODEL_BSS_CONFIG_H
#define HALVANE_MODEL_BSS_CONFIG_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/ssid.h"
#include "halvane/model/bss_config_values.h"  // IWYU pragma: export
#include "halvane/model/bss_limits.h"
#include "halvane/model/security_kind.h"  // IWYU pragma: export

namespace halvane {

class HALVANE_EXPORT HalvaneBSSConfig : public BSSConfigValues {
  public:
    // An open network of all PHY modes: allowAuthenticationOpen(), allowSecurityOpen() and the four
    // allowPHY...() are true, eapolRetryCount() is 3, eapolRetryInterval() 100, eapolGTKRotation()
    // 300; everything else is 0, false or absent.
    static HalvaneBSSConfig init();

    // Missing keys read as 0, false or absent: the values of init() do not stand in for them.
    static HalvaneBSSConfig initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // The fields in the order of halvane/model/bss_config_values.h; absent ones are left out.
    PropertyListDictionary skeletonRepresentation() const;

    // What kind of network the flags make: the strongest allowed of WPS, WPA, WEP and open decides,
    // and 802.1X key management tells the two kinds of WEP and WPA apart.
    HalvaneSecurityKind wifiSecurity() const;

    // Set the octets of ssid() or passphrase() to those of UTF-8 text.
    //
    //   kStatusUnsupported  33 or more characters of an SSID, 64 or more of a passphrase, in UTF-16
    //                       code units; the octets may be more. The old value stays.
    //   kStatusNoMemory     the text is not UTF-8, or there is no memory for it. The field is
    //                       absent.
    bool setSSID_error(std::string_view ssid, std::optional<Error>* error = nullptr);
    bool setWirelessPassphrase_error(std::string_view passphrase,
                                     std::optional<Error>* error = nullptr);

    // The same from hexadecimal text, as ConfigParser::convertToDataFromHex reads it and with its
    // codes beside these. After any failure the field is absent.
    //
    //   kStatusUnsupported  33 or more octets of an SSID; those of a passphrase have no limit
    bool setSSIDFromHexString_error(std::string_view digits, std::optional<Error>* error = nullptr);
    bool setWirelessPassphraseFromHexString_error(std::string_view digits,
                                                  std::optional<Error>* error = nullptr);

    // The same from octets, which are taken as they are; a passphrase may have any number of them,
    // and no octets at all are a present, empty field. std::bad_alloc leaves the field as it was.
    void setSSID(const Ssid& ssid);
    void setPassphrase(std::span<const std::uint8_t> passphrase);

    // A pre-shared key that was derived elsewhere; generateKeyMaterial() replaces it.
    void setKeyMaterial(std::span<const std::uint8_t, kBSSKeySize> key);

    // Set the flags of a group from a comma-separated list of the words in
    // halvane/model/bss_option_words.h: those of its words become true, the others false, so that
    // an empty list allows nothing.
    //
    //   kStatusUnsupported  a piece of the list is no word of the group
    //   kStatusNoMemory     there is no memory for the list
    //
    // After a failure the flags are as they were.
    bool setAuthenticationWithOptionString_error(std::string_view words,
                                                 std::optional<Error>* error = nullptr);
    bool setSecurityWithOptionString_error(std::string_view words,
                                           std::optional<Error>* error = nullptr);
    bool setUnicastCipherWithOptionString_error(std::string_view words,
                                                std::optional<Error>* error = nullptr);
    bool setMulticastCipherWithOptionString_error(std::string_view words,
                                                  std::optional<Error>* error = nullptr);
    bool setKeyManagementWithOptionString_error(std::string_view words,
                                                std::optional<Error>* error = nullptr);
    bool setPHYModeWithOptionString_error(std::string_view words,
                                          std::optional<Error>* error = nullptr);
    bool setWPSConfigurationMethodsString_error(std::string_view words,
                                                std::optional<Error>* error = nullptr);

    // No country is accepted: false, always. Neither the record nor the error is touched.
    bool setCountry_error(std::string_view country, std::optional<Error>* error = nullptr);

    // Derives keyMaterial() where wifiSecurity() is kHalvaneSecurityWPAPSK: the key of passphrase()
    // and ssid(), or absent where wpaPasswordHash gives none. Does nothing for other kinds.
    void generateKeyMaterial();

    // The pre-shared key of a passphrase, 32 bytes (IEEE 802.11-2020, J.4.1: PBKDF2 with HMAC-SHA1
    // and 4096 iterations). The error is written after a failure only.
    //
    //   absent, no error    a passphrase of exactly 32 bytes: it is no ready key either
    //   kStatusUnsupported  no SSID, or one that has not 1 to 32 bytes; a passphrase that has not 8
    //                       to 63 bytes, or one that isprint() does not know in the current locale
    //   kStatusNoMemory     there is no memory for the key
    static std::optional<ByteBuffer> wpaPasswordHash_withSSID_error(
        const std::optional<ByteBuffer>& passphrase, const std::optional<ByteBuffer>& ssid,
        std::optional<Error>* error = nullptr);

    // One block of such a key, 20 bytes: the function F of PBKDF2 (RFC 8018, 5.2), of the block
    // `count`, from 1 on. 0 iterations are taken for 1. Nothing is asked of the passphrase.
    // REQUIRES: an SSID of at most 32 bytes, as there is no other; what is longer is hashed whole.
    static ByteBuffer F_withSSID_withIterations_withCount(const ByteBuffer& passphrase,
                                                          const ByteBuffer& ssid,
                                                          std::uint32_t iterations,
                                                          std::uint32_t count);

    // Lines of padded labels, passphrase and key among them.
    std::string description() const;

    // All fields are equal.
    friend bool operator==(const HalvaneBSSConfig&, const HalvaneBSSConfig&) = default;

  private:
    // A bare object: 0, false or absent.
    HalvaneBSSConfig() = default;

    // Null where there is no memory for them, which `error` tells then.
    Fields* fieldsToSet(std::optional<Error>* error);
};

}  // namespace halvane

#endif
