// The device PIN of Wi-Fi Protected Setup: eight digits, the last of which checks the others (Wi-Fi
// Simple Configuration 2.0, clause 7.4.1).
//
// A PIN is held as a number, so its leading zeros are not there: 00100007 is 100007.
//
// Threads: the class-level operations may be called from any thread; a record is used by one at a
// time.
#ifndef HALVANE_IE_WPS_H
#define HALVANE_IE_WPS_H

#include <cstdint>
#include <optional>

#include "halvane/base/export.h"
#include "halvane/base/number.h"

namespace halvane {

class HALVANE_EXPORT HalvaneWPS {
  public:
    // A fresh random PIN, check digit included, as a signed number of 0 to 99999999. The digits 0
    // to 5 are a little more frequent than the others.
    static Number generatePIN();

    // The check digit, 0 to 9, of an eight-digit PIN, whose own last digit does not matter; so of a
    // seven-digit one it takes ten times that. 0 for no number. The low 32 bits count, of a
    // negative integer those of its two's complement, and of that value the last eight digits.
    static unsigned computeChecksum(const std::optional<Number>& pin);

    // Whether the last of the last eight digits checks them; false for no number. A negative number
    // is judged like its opposite, and an unsigned one above INT64_MAX like the signed one of the
    // same 64 bits.
    static bool validateChecksum(const std::optional<Number>& pin);

    // Stored, and neither read nor written by any operation.
    std::uint64_t pin() const { return pin_; }
    void setPin(std::uint64_t value) { pin_ = value; }

    // Does nothing.
    void generateDHKeyPair() {}

  private:
    std::uint64_t pin_ = 0;
};

}  // namespace halvane

#endif
