#include "halvane/base/date.h"

#include <algorithm>
#include <chrono>

namespace halvane {

namespace {

using std::chrono::days;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

constexpr sys_seconds kEarliest = sys_days(std::chrono::year(1) / 1 / 1);
constexpr sys_seconds kLatest = sys_days(std::chrono::year(9999) / 12 / 31) + days(1) - seconds(1);

}  // namespace

Date Date::fromUnixTime(std::int64_t value) {
    Date date;
    date.seconds_ = std::clamp<std::int64_t>(value, kEarliest.time_since_epoch().count(),
                                             kLatest.time_since_epoch().count());
    return date;
}

std::optional<Date> Date::fromFields(const Fields& fields) {
    const bool isYearCarried = fields.year >= 1 && fields.year <= 9999;
    const bool isTimeOfDay = fields.hour < 24 && fields.minute < 60 && fields.second < 60;
    // The calendar types store a month and a day in one byte each, so 257 would become 1.
    if (!isYearCarried || fields.month > 12 || fields.day > 31 || !isTimeOfDay) return std::nullopt;
    const year_month_day day(std::chrono::year(fields.year), std::chrono::month(fields.month),
                             std::chrono::day(fields.day));
    if (!day.ok()) return std::nullopt;
    const sys_seconds instant = sys_days(day) + std::chrono::hours(fields.hour) +
                                std::chrono::minutes(fields.minute) + seconds(fields.second);
    return fromUnixTime(instant.time_since_epoch().count());
}

Date::Fields Date::fields() const {
    const sys_seconds instant{seconds(seconds_)};
    const sys_days midnight = std::chrono::floor<days>(instant);
    const year_month_day day(midnight);
    const std::chrono::hh_mm_ss time(instant - midnight);
    return {static_cast<int>(day.year()),
            static_cast<unsigned>(day.month()),
            static_cast<unsigned>(day.day()),
            static_cast<unsigned>(time.hours().count()),
            static_cast<unsigned>(time.minutes().count()),
            static_cast<unsigned>(time.seconds().count())};
}

}  // namespace halvane
