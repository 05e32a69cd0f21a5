#pragma once

#include "tolv_action_auto.h"
#include "tolv_export.h"

class QAction;
class QObject;

/// A new action for a command, so that it looks and is called the same in all tools: menu text, icon, shortcut, status
/// tip, tool tip and check mark as its row says, owned by `parent`. The rows with a key have a tool tip that names it,
/// "Copy - Ctrl+C"; those without leave it to Qt, which shows the menu text. Whether checkable actions make up a radio
/// group, as the mouse tools do, is for the builder of the menu to say.
///
/// The key of TOLV_HELP_ACTION, F1, is that of the help of windows and dialogs, too. So it works only in the widget that
/// the action is added to, and its children; in a menu bar it is shown, and F1 stays with the window.
///
/// The only entry that takes any value: one that is no command's gives a bare action without a report.
TOLV_EXPORT QAction* tolv_create_action(TOLV_ACTION_ENUM action, QObject* parent);
