#pragma once

#include <QPalette>

/// The colours of windows on a light or a dark desktop.
QPalette workbench_get_palette(bool is_dark);
