#pragma once

#include "tolv_export.h"

#include <QFont>
#include <QString>

#include <string>

struct TOLV_INITIAL_FONT;

/// The attributes by which the drawing resources tell fonts apart.
struct TOLV_EXPORT TOLV_FONT_ATTRIBUTES
{
    int point_size = 0;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeout = false;
    bool fixed_pitch = false;
    QFont::StyleHint style_hint = QFont::SansSerif;
    QString family;

    /// The attributes of a font. Bold is a weight of 58 or more, italic any style but the normal one.
    static TOLV_FONT_ATTRIBUTES from_font(const QFont& font);
    /// The attributes of a row of the font table.
    static TOLV_FONT_ATTRIBUTES from_row(const TOLV_INITIAL_FONT& row);

    /// Gives a font these attributes and leaves its others alone.
    void apply_to(QFont& font) const;
    /// The text that tells two fonts apart: numbers divided by commas, then the family in the local 8-bit encoding.
    std::string get_key() const;

    /// Whether a weight counts as bold.
    static bool is_bold_weight(int weight);
};
