#pragma once

#include "tolv_export.h"

#include <QString>

/// Comparison of displayed values, for sorting. It lies on the sort path of every view, so numbers are read by a
/// scanner of its own that allocates nothing, and not by a regular expression.

/// What tolv_scan_number() found.
enum TOLV_NUMBER_SCAN
{
    TOLV_NUMBER_SCAN_NONE,         ///< the text is no number
    TOLV_NUMBER_SCAN_OUT_OF_RANGE, ///< it is one, but too large or too small for a double
    TOLV_NUMBER_SCAN_VALUE         ///< it is one, and its value is known
};

/// Reads a number as views display it: an optional sign, digits with thousands commas anywhere between them, a fraction
/// and an exponent. A number is exactly what the regular expression
/// `^[-+]?[0-9]*(\,[0-9]+)*\.?[0-9]+([eE][-+]?[0-9]+)?$` matches: "1,000", ".5", "-1e3" are numbers; "5.", "1,0" (the
/// comma of a number without a fraction has at least two digits behind it), " 5" and digits other than 0 to 9 are not.
/// One line feed may stand behind the number, as "$" also matches there.
/// @param value receives what QString::toDouble() gives for the text without its commas; written only with
///              TOLV_NUMBER_SCAN_VALUE, must not be null
TOLV_EXPORT TOLV_NUMBER_SCAN tolv_scan_number(const QString& text, double* value);

/// Orders two displayed values: below zero, zero or above zero. Two numbers (tolv_scan_number()) compare by value, so
/// that "1.0" and "1.00" are equal and "10" is above "9"; where one of the two is no number, or one that a double
/// cannot hold ("1e999", "1e-999"), both compare by gen_signed_lexcmp() in the local 8-bit encoding, up to the first
/// NUL.
TOLV_EXPORT int tolv_string_cmp(const QString& a, const QString& b);
