#pragma once

#include "tolv_gdi_enums.h"

#include <QColor>
#include <QPushButton>
#include <QWidget>

class PREFERENCES_SESSION;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

/// A button that shows a colour and lets the user choose another one. While the dialog is open the colours that are
/// tried out are reported as they come; cancelling it reports the colour of before.
class PREFERENCES_COLOR_BUTTON : public QPushButton
{
    Q_OBJECT

public:
    explicit PREFERENCES_COLOR_BUTTON(const QString& text, QWidget* parent = nullptr);

    void set_color(const QColor& color);

signals:
    void color_chosen(const QColor& color);

private slots:
    void ask();
    void report(const QColor& color);

private:
    QColor m_color;
};

/// The part of a page in which one row is changed. A change is in force at once.
class PREFERENCES_EDITOR : public QWidget
{
    Q_OBJECT

public:
    /// @param session outlives the widget
    explicit PREFERENCES_EDITOR(PREFERENCES_SESSION& session, QWidget* parent = nullptr);

    /// The row that is changed; 0 for none.
    void set_resource(int resource);
    int get_resource() const;

    /// Begins the most usual change of the row.
    virtual void begin_change() = 0;

protected:
    PREFERENCES_SESSION& get_session() const;
    /// Shows what is in force. Not called without a row.
    virtual void show_values() = 0;

private slots:
    void refresh();

private:
    PREFERENCES_SESSION& m_session;
    int m_resource = 0;
};

/// A colour: by a dialog, or as a text.
class PREFERENCES_COLOR_EDITOR : public PREFERENCES_EDITOR
{
    Q_OBJECT

public:
    explicit PREFERENCES_COLOR_EDITOR(PREFERENCES_SESSION& session, QWidget* parent = nullptr);

    void begin_change() override;

protected:
    void show_values() override;

private slots:
    void take_color(const QColor& color);
    /// While the user types: a complete "#rrggbb" only.
    void take_typed_text(const QString& text);
    /// At the end: all that Qt understands as a colour.
    void take_text();

private:
    QLineEdit* m_text;
    PREFERENCES_COLOR_BUTTON* m_button;
    QLabel* m_default;
};

/// A font: family, size, bold, italic, and its two colours.
class PREFERENCES_FONT_EDITOR : public PREFERENCES_EDITOR
{
    Q_OBJECT

public:
    explicit PREFERENCES_FONT_EDITOR(PREFERENCES_SESSION& session, QWidget* parent = nullptr);

    void begin_change() override;

protected:
    void show_values() override;

private slots:
    void take_family();
    void take_values();
    void take_text_color(const QColor& color);
    void take_background_color(const QColor& color);

private:
    TOLV_FONT_RESOURCE get_font() const;
    void show_color(PREFERENCES_COLOR_BUTTON* button, TOLV_COLOR_RESOURCE color);
    QString get_sharers(TOLV_COLOR_RESOURCE color) const;

    QComboBox* m_family;
    QSpinBox* m_size;
    QCheckBox* m_bold;
    QCheckBox* m_italic;
    PREFERENCES_COLOR_BUTTON* m_text_color;
    PREFERENCES_COLOR_BUTTON* m_background_color;
};

/// A line: its width, and the named colour that it draws in.
class PREFERENCES_PEN_EDITOR : public PREFERENCES_EDITOR
{
    Q_OBJECT

public:
    explicit PREFERENCES_PEN_EDITOR(PREFERENCES_SESSION& session, QWidget* parent = nullptr);

    void begin_change() override;

protected:
    void show_values() override;

private slots:
    void take_values();

private:
    TOLV_PEN_RESOURCE get_pen() const;
    void add_color(TOLV_COLOR_RESOURCE color);

    QSpinBox* m_width;
    QComboBox* m_color;
};
