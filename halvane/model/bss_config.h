// The configuration of one network (BSS) that an interface hosts.
//
// A caller sets its fields from typed values, or from option words of a command line or file, and
// lets it derive the key material. Its skeleton is what goes to the daemon.
//
// The record does not check whether its fields fit together. Operations that end in _error return
// whether they succeeded. On failure they store an error of kDaemonErrorDomain, with a code of
// halvane/base/status.h, in `error` if that is given; on success they clear it.
//
// A value type that holds secrets: the passphrase and the key are in its memory, its skeleton and
// its description. The buffers in which operations store them are wiped when the last copy is
// destroyed; the caller wipes all other copies of these texts. Threads: only one thread at a time
// may use a record; any thread may call the class-level operations.
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
    // Creates an open network of all PHY modes: allowAuthenticationOpen(), allowSecurityOpen() and
    // the four allowPHY...() are true, eapolRetryCount() is 3, eapolRetryInterval() 100,
    // eapolGTKRotation() 300. Every other field is 0, false or absent.
    static HalvaneBSSConfig init();

    // A missing key reads as 0, false or absent, not as the value of init().
    static HalvaneBSSConfig initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // Writes the fields in the order of halvane/model/bss_config_values.h. Absent fields are left
    // out.
    PropertyListDictionary skeletonRepresentation() const;

    // Returns the kind of network that the flags describe: the strongest allowed one of WPS, WPA,
    // WEP and open. 802.1X key management distinguishes the two kinds of WEP and of WPA.
    HalvaneSecurityKind wifiSecurity() const;

    // Set the octets of ssid() or passphrase() to those of a UTF-8 text.
    //
    //   kStatusUnsupported  an SSID of 33 or more characters, or a passphrase of 64 or more,
    //                       counted in UTF-16 code units; the octets may be more. The old value
    //                       stays.
    //   kStatusNoMemory     the text is not UTF-8, or out of memory. The field becomes absent.
    bool setSSID_error(std::string_view ssid, std::optional<Error>* error = nullptr);
    bool setWirelessPassphrase_error(std::string_view passphrase,
                                     std::optional<Error>* error = nullptr);

    // The same from hexadecimal text, as ConfigParser::convertToDataFromHex reads it. Its codes
    // apply too. After any failure the field is absent.
    //
    //   kStatusUnsupported  an SSID of 33 or more octets; a passphrase may have any number
    bool setSSIDFromHexString_error(std::string_view digits, std::optional<Error>* error = nullptr);
    bool setWirelessPassphraseFromHexString_error(std::string_view digits,
                                                  std::optional<Error>* error = nullptr);

    // The same from octets, which are not checked. A passphrase may have any number of octets. No
    // octets give a field that is present and empty. After std::bad_alloc the field is unchanged.
    void setSSID(const Ssid& ssid);
    void setPassphrase(std::span<const std::uint8_t> passphrase);

    // Sets a pre-shared key that was derived elsewhere. generateKeyMaterial() replaces it.
    void setKeyMaterial(std::span<const std::uint8_t, kBSSKeySize> key);

    // Set the flags of a group from a comma-separated list of the words in
    // halvane/model/bss_option_words.h. Flags whose words are listed become true, the others false.
    // An empty list therefore allows nothing.
    //
    //   kStatusUnsupported  an item of the list is not a word of the group
    //   kStatusNoMemory     out of memory
    //
    // After a failure the flags are unchanged.
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

    // Always returns false: no country is accepted. The record and the error are unchanged.
    bool setCountry_error(std::string_view country, std::optional<Error>* error = nullptr);

    // Derives keyMaterial() from passphrase() and ssid() if wifiSecurity() is
    // kHalvaneSecurityWPAPSK. If wpaPasswordHash returns no key, keyMaterial() becomes absent. Does
    // nothing for other kinds.
    void generateKeyMaterial();

    // Returns the pre-shared key of a passphrase, 32 bytes (IEEE 802.11-2020, J.4.1: PBKDF2 with
    // HMAC-SHA1 and 4096 iterations). The error is changed only by a failure.
    //
    //   absent, no error    a passphrase of exactly 32 bytes, which is not a ready key either
    //   kStatusUnsupported  no SSID, or one that does not have 1 to 32 bytes; a passphrase that
    //                       does not have 8 to 63 bytes, or that isprint() refuses in the current
    //                       locale
    //   kStatusNoMemory     out of memory
    static std::optional<ByteBuffer> wpaPasswordHash_withSSID_error(
        const std::optional<ByteBuffer>& passphrase, const std::optional<ByteBuffer>& ssid,
        std::optional<Error>* error = nullptr);

    // Returns one block of such a key, 20 bytes: the function F of PBKDF2 (RFC 8018, 5.2) for block
    // `count`, counted from 1. 0 iterations count as 1. The passphrase is not checked.
    // REQUIRES: an SSID of at most 32 bytes, which every SSID has; a longer one is hashed whole.
    static ByteBuffer F_withSSID_withIterations_withCount(const ByteBuffer& passphrase,
                                                          const ByteBuffer& ssid,
                                                          std::uint32_t iterations,
                                                          std::uint32_t count);

    // Lines of padded labels, including the passphrase and the key.
    std::string description() const;

    // Equal configurations have equal fields.
    friend bool operator==(const HalvaneBSSConfig&, const HalvaneBSSConfig&) = default;

  private:
    // An object whose fields are all 0, false or absent.
    HalvaneBSSConfig() = default;

    // Returns null, and stores the error, if memory runs out.
    Fields* fieldsToSet(std::optional<Error>* error);
};

}  // namespace halvane

#endif
