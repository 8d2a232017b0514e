// The device PIN of Wi-Fi Protected Setup: eight digits, of which the last is a check digit (Wi-Fi
// Simple Configuration 2.0, clause 7.4.1).
//
// A PIN is stored as a number, without its leading zeros: 00100007 is 100007.
//
// Threads: any thread may call the class-level operations; one thread at a time uses a record.
#ifndef HALVANE_IE_WPS_H
#define HALVANE_IE_WPS_H

#include <cstdint>
#include <optional>

#include "halvane/base/export.h"
#include "halvane/base/number.h"

namespace halvane {

class HALVANE_EXPORT HalvaneWPS {
  public:
    // Returns a new random PIN, check digit included, as a signed number of 0 to 99999999. The
    // digits 0 to 5 are slightly more frequent than the others.
    static Number generatePIN();

    // Returns the check digit, 0 to 9, of an eight-digit PIN, whose own last digit does not matter.
    // For a seven-digit PIN, pass ten times its value. Returns 0 for no number. Only the low 32
    // bits count, of a negative integer those of its two's complement, and of their value the last
    // eight digits.
    static unsigned computeChecksum(const std::optional<Number>& pin);

    // Returns whether the last of the last eight digits is their check digit; false for no number.
    // A negative number counts like its absolute value, and an unsigned one above INT64_MAX like
    // the signed one with the same 64 bits.
    static bool validateChecksum(const std::optional<Number>& pin);

    // Stored only. No operation reads or writes it.
    std::uint64_t pin() const { return pin_; }
    void setPin(std::uint64_t value) { pin_ = value; }

    // Does nothing.
    void generateDHKeyPair() {}

  private:
    std::uint64_t pin_ = 0;
};

}  // namespace halvane

#endif
