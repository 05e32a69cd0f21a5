#pragma once

#include "tolv_export.h"

#include <QAction>

/// The action of a window class that opens its help on F1: text "F1 Help", shortcut "F1" in the window and all its
/// children. Where such windows stand in one another, as a dialog in the area of documents does, the key belongs to the
/// innermost one around the focus.
class TOLV_EXPORT TOLV_F1_ACTION : public QAction
{
    Q_OBJECT

public:
    /// Adds itself to the window, which owns it.
    /// @param slot what triggered() is connected to in the window, as SLOT() makes it
    TOLV_F1_ACTION(QWidget* window, const char* slot);
    ~TOLV_F1_ACTION() override;

    bool event(QEvent* event) override;
};
