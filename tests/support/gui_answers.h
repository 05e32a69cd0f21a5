#pragma once

#include "test_place.h"

#include <QString>

#include <functional>

class QDialog;
class QMenu;

/// Answers to modal dialogs and menus, whose exec() returns only when they are closed. An answer is ordered beforehand
/// and given when the next dialog or menu has come up on the screen; several are given in the order of their orders,
/// dialogs and menus each by themselves. What goes wrong fails the test at the place of the order, and the dialog or
/// menu is closed: no such button, a button that is disabled, a dialog that stays open behind its answer. The fixtures
/// fail a test in which an ordered answer was not asked for, and one in which a modal dialog or a menu stays on the
/// screen for 20 seconds with nobody answering it.

/// The next modal dialog gets a click on the button with this text (marks of mnemonics left out).
void answer_next_dialog(const QString& button_text, TEST_PLACE place = TEST_PLACE::here());
/// The next modal dialog is handed to a function, which brings it to its end.
void answer_next_dialog(std::function<void(QDialog* dialog)> answer, TEST_PLACE place = TEST_PLACE::here());

/// In the next menu that pops up the action with this text (marks of mnemonics and shortcut left out) is clicked. For
/// an action that opens a menu below, order a second answer.
void answer_next_menu(const QString& action_text, TEST_PLACE place = TEST_PLACE::here());
/// The next menu is handed to a function. It may leave it open where it opens another one.
void answer_next_menu(std::function<void(QMenu* menu)> answer, TEST_PLACE place = TEST_PLACE::here());

/// What the fixtures call: begins to watch the windows of the application, which must exist.
void watch_for_answers();
/// Fails the test for each ordered answer that nothing has asked for, and forgets it.
void check_answers();
