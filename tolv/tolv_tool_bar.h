#pragma once

#include "tolv_export.h"

#include <QToolBar>

#include <string>

class TOLV_MAIN_WINDOW;

/// The tool bar of all tools. Its icons have the height of a line of the GUI font, or one and a half of it: one choice
/// for all tool bars, which the user's registry keeps (SUB_KEY_TOOL_BARS, CFGQ_TOLV_TOOLBAR_LARGE_ICONS). Its accessible
/// name is the topic of its help.
class TOLV_EXPORT TOLV_TOOL_BAR : public QToolBar
{
    Q_OBJECT

public:
    /// Both apply the choice in force and so store it, too.
    explicit TOLV_TOOL_BAR(const QString& title, QWidget* parent = nullptr);
    explicit TOLV_TOOL_BAR(QWidget* parent = nullptr);
    ~TOLV_TOOL_BAR() override;

    /// The stored choice. Where none is stored yet, large icons on a primary screen with 1600 by 1080 pixels to spare or
    /// more, and without a screen; a smaller screen stores its answer. The configuration switch "small_icons", read once
    /// in the process, overrules all. The argument counts for nothing.
    static bool get_large_icon_setting(QWidget* widget);
    /// Applies the choice to this bar and stores it.
    void set_large_icons(bool large);
    /// The same for all tool bars of a window; null has none.
    static void set_large_icons(TOLV_MAIN_WINDOW* window, bool large);

    /// Topic of the tool bar's help, local 8-bit encoding: "Customize", unless a subclass has a better one.
    virtual std::string get_help_topic_string();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setup();
};
