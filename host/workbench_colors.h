#pragma once

#include "tolv_gdi_enums.h"

#include <QColor>
#include <QPalette>

/// Colours that can be read.

/// How well one colour stands out on another: from 1, not at all, to 21, black on white. Texts want 4.5.
double workbench_get_contrast(const QColor& a, const QColor& b);

/// Black or white, what is easier to read on the ground.
QColor workbench_get_contrast_color(const QColor& ground);

/// A named colour to write with on the window's own ground (QPalette::Base). The built-in colours are made for light
/// windows: one that is hard to read on a dark ground is made lighter. A colour that the user has chosen stays as it is.
QColor workbench_get_text_color(TOLV_COLOR_RESOURCE resource);

/// The colours of windows on a light or a dark desktop.
QPalette workbench_get_palette(bool is_dark);
