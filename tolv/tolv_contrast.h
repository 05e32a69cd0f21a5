#pragma once

#include "tolv_export.h"
#include "tolv_gdi_enums.h"

#include <QColor>

/// Colours that can be read.

/// How well one colour stands out on another: from 1, not at all, to 21, black on white. Texts want 4.5.
TOLV_EXPORT double tolv_get_contrast(const QColor& a, const QColor& b);

/// Black or white, what is easier to read on the ground.
TOLV_EXPORT QColor tolv_get_contrast_color(const QColor& ground);

/// A named colour to write with on the window's own ground (QPalette::Base). The built-in colours are made for light
/// windows: one that is hard to read on a dark ground is made lighter. A colour that the user has chosen stays as it is.
TOLV_EXPORT QColor tolv_get_readable_color(TOLV_COLOR_RESOURCE resource);
