// A point in time as a property list carries it: UTC, Gregorian calendar, whole seconds.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_BASE_DATE_H
#define HALVANE_BASE_DATE_H

#include <compare>
#include <cstdint>
#include <optional>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT Date {
  public:
    // The fields of a date on the proleptic Gregorian calendar.
    struct Fields {
        int year;         // 1 to 9999
        unsigned month;   // 1 to 12
        unsigned day;     // 1 to 31
        unsigned hour;    // 0 to 23
        unsigned minute;  // 0 to 59
        unsigned second;  // 0 to 59

        friend bool operator==(const Fields&, const Fields&) = default;
    };

    // 1970-01-01 00:00:00.
    Date() = default;

    // Converts seconds since 1970-01-01 00:00:00. A time outside the years 1 to 9999 becomes the
    // nearest second inside.
    static Date fromUnixTime(std::int64_t seconds);

    // Absent if the fields name no date ("February 30").
    static std::optional<Date> fromFields(const Fields& fields);

    // Seconds since 1970-01-01 00:00 UTC, without leap seconds.
    std::int64_t unixTime() const { return seconds_; }
    // The date and time of day, in UTC.
    Fields fields() const;

    friend auto operator<=>(const Date&, const Date&) = default;

  private:
    std::int64_t seconds_ = 0;
};

}  // namespace halvane

#endif
