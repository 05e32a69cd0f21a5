#pragma once

#include "tolv_font_attributes.h"

#include <QPen>
#include <QString>

#include <string>

/// The texts in which the drawing resources stand in the registry of user settings. They are read with distrust: what
/// does not fit gives no value, and no number out of its range ever reaches Qt.

/// A pen as it is stored. The text ends in the colour's value, which is written for readers and never read.
struct TOLV_EXPORT TOLV_STORED_PEN
{
    std::string color_name;
    Qt::PenStyle style = Qt::SolidLine;
    Qt::PenCapStyle cap = Qt::SquareCap;
    Qt::PenJoinStyle join = Qt::MiterJoin;
    int width = 1;

    /// "name style cap join width value": exactly six parts, of which the second to the fifth are numbers that a pen
    /// can have. Returns whether the text was one; `*pen` is written only then.
    static bool parse(const QString& text, TOLV_STORED_PEN* pen);
    static QString format(const std::string& color_name, const QPen& pen);
};

/// A font as it is stored.
struct TOLV_EXPORT TOLV_STORED_FONT
{
    bool can_change = false;
    std::string text_color_name;
    std::string background_color_name;
    TOLV_FONT_ATTRIBUTES attributes;

    /// "flag name name size bold italic underline strikeout fixed hint, family": ten fields, then what stands between
    /// the first comma and the second. Returns whether the text was one; `*font` is written only then.
    static bool parse(const QString& text, TOLV_STORED_FONT* font);
    static QString format(bool can_change, const std::string& text_color_name, const std::string& background_color_name,
                          const QFont& font);
};
