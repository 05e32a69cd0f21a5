#pragma once

#include "module_export.h"

#include "tolv_dock_widget.h"

class MESSAGE_VIEW;
class TOLV_MAIN_WINDOW;

/// The window of messages. A tool hands messages over by the slots, by name, since it does not link to the module:
///
///     QMetaObject::invokeMethod(dock, "add_note", Q_ARG(QString, text));
class MESSAGES_DOCK : public TOLV_DOCK_WIDGET
{
    Q_OBJECT

public:
    explicit MESSAGES_DOCK(QWidget* parent);

    void scroll_to_bottom() const override;

public slots:
    void add_note(const QString& text);
    void add_error(const QString& text);
    void clear();
    /// Takes over the named font and colours that are in force.
    void apply_drawing_resources();

private:
    MESSAGE_VIEW* m_view;
};

MODULE_EXPORT TOLV_DOCK_WIDGET* mod_messages_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
