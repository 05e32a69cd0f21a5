#pragma once

#include "msg_fixed_text_p.h"

/// The date of a time, for the handler of a fatal signal: the C library's own functions take locks.
struct MSG_UTC_DATE
{
    long long year;
    long long month; ///< 1 to 12
    long long day;   ///< 1 to 31
};

/// The Gregorian date of a day, counted from 1970-01-01; 0 or above.
inline MSG_UTC_DATE msg_get_utc_date(long long days_since_1970)
{
    // Counted from 0000-03-01, in cycles of 400 years: the leap day ends a year that begins in March.
    const long long days = days_since_1970 + 719468;
    const long long cycle = days / 146097;
    const long long day_of_cycle = days % 146097;
    const long long year_of_cycle =
        (day_of_cycle - day_of_cycle / 1460 + day_of_cycle / 36524 - day_of_cycle / 146096) / 365;
    const long long day_of_year = day_of_cycle - (365 * year_of_cycle + year_of_cycle / 4 - year_of_cycle / 100);
    const long long month_from_march = (5 * day_of_year + 2) / 153;
    const long long day = day_of_year - (153 * month_from_march + 2) / 5 + 1;
    const long long month = month_from_march < 10 ? month_from_march + 3 : month_from_march - 9;
    return {cycle * 400 + year_of_cycle + (month <= 2 ? 1 : 0), month, day};
}

/// Appends a time in ISO 8601, UTC ("2024-02-29T23:59:59Z"): the 20 characters of MSG_UTC_TIME_LENGTH.
constexpr std::size_t MSG_UTC_TIME_LENGTH = 20;
inline void msg_append_utc_time(MSG_FIXED_TEXT& text, long long seconds_since_1970)
{
    const auto append = [&text](long long number, int digits, char end)
    {
        text.append_number(static_cast<unsigned long long>(number), 10, digits);
        text.append(end);
    };
    const MSG_UTC_DATE date = msg_get_utc_date(seconds_since_1970 / 86400);
    append(date.year, 4, '-');
    append(date.month, 2, '-');
    append(date.day, 2, 'T');
    append(seconds_since_1970 / 3600 % 24, 2, ':');
    append(seconds_since_1970 / 60 % 60, 2, ':');
    append(seconds_since_1970 % 60, 2, 'Z');
}
