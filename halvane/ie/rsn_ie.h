// The RSN element (ID 48) and the older WPA vendor element (ID 221, 00-50-F2 type 1), which share
// one layout after their headers.
//
// The layout is that of IEEE 802.11-2020, 9.4.2.24 (figures 9-282 to 9-285); multi-byte fields are
// little-endian. The object's OUI determines which of the two elements it is. Every suite is
// compared with that OUI. The flags below are all that the object knows of an element; suites of
// other types and other OUIs are counted and skipped.
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_RSN_IE_H
#define HALVANE_IE_RSN_IE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane {

class ByteCursor;
class HalvaneBSSConfig;

class HALVANE_EXPORT HalvaneRSNIE {
  public:
    // An empty object: version 1, no OUI, not valid.
    // (A defaulted constructor would clear the whole object first, which takes longer than
    // decoding.)
    HalvaneRSNIE() {}  // NOLINT(modernize-use-equals-default)

    // Decodes `ie`, the whole element including its header. The OUI determines its kind: 00-0F-AC
    // is an RSN element, 00-50-F2 a WPA element; for any other OUI nothing is decoded. Without an
    // element the object has only its OUI.
    static HalvaneRSNIE initWithIE_withOUI(const std::optional<ByteBuffer>& ie,
                                           const ByteBuffer& oui);
    // The same for the element of `size` bytes at `offset` in the buffer. REQUIRES: one of the two
    // OUIs
    static HalvaneRSNIE initWithIE_withOUI(const ByteBuffer& elements, std::size_t offset,
                                           std::size_t size, const OUI& oui);

    // 3 bytes: the OUI of the element and of every suite in it.
    const std::optional<ByteBuffer>& oui() const { return oui_; }
    void setOui(std::optional<ByteBuffer> oui) { oui_ = std::move(oui); }

    // The whole element, as decoded or generated.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // False if the element is truncated or cannot be generated. Flags decoded before the truncation
    // stay set.
    bool isValid() const { return isValid_; }

    // Of the element.
    std::int64_t version() const { return version_; }

    // Pairwise cipher suites 2, 4 and 0.
    bool allowUnicastCipherTKIP() const { return allowUnicastCipherTKIP_; }
    void setAllowUnicastCipherTKIP(bool value) { allowUnicastCipherTKIP_ = value; }
    bool allowUnicastCipherCCMP() const { return allowUnicastCipherCCMP_; }
    void setAllowUnicastCipherCCMP(bool value) { allowUnicastCipherCCMP_ = value; }
    bool allowUnicastCipherUseGroup() const { return allowUnicastCipherUseGroup_; }
    void setAllowUnicastCipherUseGroup(bool value) { allowUnicastCipherUseGroup_ = value; }

    // Group cipher suites 1, 5, 2 and 4.
    bool allowMulticastCipherWEP40() const { return allowMulticastCipherWEP40_; }
    void setAllowMulticastCipherWEP40(bool value) { allowMulticastCipherWEP40_ = value; }
    bool allowMulticastCipherWEP104() const { return allowMulticastCipherWEP104_; }
    void setAllowMulticastCipherWEP104(bool value) { allowMulticastCipherWEP104_ = value; }
    bool allowMulticastCipherTKIP() const { return allowMulticastCipherTKIP_; }
    void setAllowMulticastCipherTKIP(bool value) { allowMulticastCipherTKIP_ = value; }
    bool allowMulticastCipherCCMP() const { return allowMulticastCipherCCMP_; }
    void setAllowMulticastCipherCCMP(bool value) { allowMulticastCipherCCMP_ = value; }

    // Authentication and key management suites 2 and 1.
    bool allowKeyManagementPSK() const { return allowKeyManagementPSK_; }
    void setAllowKeyManagementPSK(bool value) { allowKeyManagementPSK_ = value; }
    bool allowKeyManagement8021X() const { return allowKeyManagement8021X_; }
    void setAllowKeyManagement8021X(bool value) { allowKeyManagement8021X_ = value; }

    // RSN capabilities: bits 0, 1 and 9.
    bool supportsPreAuthentication() const { return supportsPreAuthentication_; }
    void setSupportsPreAuthentication(bool value) { supportsPreAuthentication_ = value; }
    bool hasNoPairwise() const { return hasNoPairwise_; }
    void setHasNoPairwise(bool value) { hasNoPairwise_ = value; }
    bool isPeerKeyEnabled() const { return isPeerKeyEnabled_; }
    void setIsPeerKeyEnabled(bool value) { isPeerKeyEnabled_ = value; }

    // The replay counter fields of the RSN capabilities, 0 to 3: 1, 2, 4 or 16 counters. Only the
    // low two bits are generated.
    std::uint64_t replayCounterPTKSA() const { return replayCounterPTKSA_; }
    void setReplayCounterPTKSA(std::uint64_t value) { replayCounterPTKSA_ = value; }
    std::uint64_t replayCounterGTKSA() const { return replayCounterGTKSA_; }
    void setReplayCounterGTKSA(std::uint64_t value) { replayCounterGTKSA_ = value; }

    // 16 bytes each; absent if the element has no PMKID count.
    const std::optional<std::vector<ByteBuffer>>& pmkids() const { return pmkids_; }
    void setPmkids(std::optional<std::vector<ByteBuffer>> pmkids) { pmkids_ = std::move(pmkids); }

    // Decodes rawIE() in the stages below, up to the first one that lacks bytes.
    void parseIE();

    // The stages. Each takes a position in rawIE() and the number of bytes left there, and returns
    // the number left after it. A stage that lacks the bytes of a required field clears isValid()
    // and consumes nothing. Capabilities and PMKIDs may be missing.
    std::size_t parseVersion_withLength(std::size_t position, std::size_t length);
    std::size_t parseGroupCipher_withLength(std::size_t position, std::size_t length);
    std::size_t parsePairwiseCipher_withLength(std::size_t position, std::size_t length);
    std::size_t parseAKM_withLength(std::size_t position, std::size_t length);
    std::size_t parseCapabilities_withLength(std::size_t position, std::size_t length);
    std::size_t parsePMKIDs_withLength(std::size_t position, std::size_t length);

    // Set the flag of a suite type; other types are ignored. No flag is ever cleared.
    void setUnicastCipher(std::uint8_t suiteType);
    void setMulticastCipher(std::uint8_t suiteType);

    // 1 (802.1X) sets allowKeyManagement8021X. 2 (PSK) clears it, but only its own setter changes
    // allowKeyManagementPSK: callers rely on that asymmetry.
    void setAKM(std::uint8_t suiteType);

    // The number of pairwise flags, and of AKM flags, that are set.
    std::size_t countUnicastCiphers() const;
    std::size_t countAKMs() const;

    // Appends oui() and the suite type.
    void appendSuite_cipher(std::vector<std::uint8_t>& buffer, std::uint8_t suiteType) const;

    // Rebuilds rawIE() from the flags. An element requires one of the two OUIs above, a pairwise
    // cipher and an AKM; otherwise rawIE() becomes absent and isValid() false. The length byte
    // counts modulo 256, so an element with more than about 14 PMKIDs does not fit into a frame. A
    // WPA element gets PMKIDs without capabilities before them, so decoding it does not restore the
    // PMKIDs.
    void generateIE();

    // Reserved; does nothing.
    void generateMatchingConfig(const HalvaneBSSConfig& configuration);

    // Lines with padded labels, indented by four spaces.
    std::string description() const;

  private:
    void parseFields(std::size_t offset);
    // Each reads the fields of a stage. Returns false if bytes lack, whatever was read of them.
    bool readVersion(ByteCursor& cursor);
    bool readGroupCipher(ByteCursor& cursor);
    bool readPairwiseCipher(ByteCursor& cursor);
    bool readAKM(ByteCursor& cursor);
    bool readCapabilities(ByteCursor& cursor);
    bool readPMKIDs(ByteCursor& cursor);
    using Read = bool (HalvaneRSNIE::*)(ByteCursor&);
    std::size_t parse(Read read, std::size_t position, std::size_t length);
    template <typename SuiteFound>
    bool readSuites(ByteCursor& cursor, SuiteFound found);

    std::uint8_t groupCipherType() const;
    void appendFlaggedSuites(std::vector<std::uint8_t>& element) const;
    void appendCapabilities(std::vector<std::uint8_t>& element) const;
    void appendPMKIDs(std::vector<std::uint8_t>& element) const;

    std::optional<ByteBuffer> oui_;
    std::optional<ByteBuffer> rawIE_;
    bool isValid_ = false;
    bool allowUnicastCipherTKIP_ = false;
    bool allowUnicastCipherCCMP_ = false;
    bool allowUnicastCipherUseGroup_ = false;
    bool allowMulticastCipherWEP40_ = false;
    bool allowMulticastCipherWEP104_ = false;
    bool allowMulticastCipherTKIP_ = false;
    bool allowMulticastCipherCCMP_ = false;
    bool allowKeyManagementPSK_ = false;
    bool allowKeyManagement8021X_ = false;
    bool supportsPreAuthentication_ = false;
    bool hasNoPairwise_ = false;
    bool isPeerKeyEnabled_ = false;
    std::int64_t version_ = 1;
    std::uint64_t replayCounterPTKSA_ = 0;
    std::uint64_t replayCounterGTKSA_ = 0;
    std::optional<std::vector<ByteBuffer>> pmkids_;
};

}  // namespace halvane

#endif
