#pragma once

#include "tolv_export.h"

#include <QLabel>
#include <QString>
#include <QWidget>

#include <string>

class QCheckBox;
class QHBoxLayout;
class QRadioButton;

/// Controls with a small question mark beside them, which carries a long explanation as its tool tip. Users see the
/// question marks where the configuration switch CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC is on.

/// The question mark. With the switch off it is hidden; it has its picture and its tool tip all the same.
class TOLV_EXPORT TOLV_HELP_LABEL : public QLabel
{
    Q_OBJECT

public:
    explicit TOLV_HELP_LABEL(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_HELP_LABEL() override;
};

/// A control and its question mark in a row. Subclasses make the control, answer it in get_help_widget() and call
/// setup() at the end of their constructor.
class TOLV_EXPORT TOLV_WIDGET_WITH_HELP : public QWidget
{
    Q_OBJECT

public:
    explicit TOLV_WIDGET_WITH_HELP(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_WIDGET_WITH_HELP() override;

    /// The control. Here it is the internal error "Illegal call to get_help_widget, please call the derived classes.";
    /// where that returns, the result is null.
    virtual QWidget* get_help_widget() const;
    /// Lays out the control, the question mark and a stretch behind them.
    virtual void setup();

    /// Tool tip of the control.
    void set_tooltip(const QString& text);
    /// Tool tip of the question mark: rich text in the local 8-bit encoding, without the frame of "<html>"; line ends
    /// become "<br>".
    void set_help_tooltip(const std::string& text);
    /// The same text back. "<br>" stays "<br>", which is meant.
    std::string get_help_tooltip() const;
    /// Margins around the row in pixels; 0 at first.
    void set_contents_margins(int left, int top, int right, int bottom);

protected:
    TOLV_HELP_LABEL* m_help_label; ///< the question mark, a child
    QHBoxLayout* m_layout;         ///< the row, the widget's own; empty before setup()
};

/// A text with a question mark.
class TOLV_EXPORT TOLV_LABEL_WITH_HELP : public TOLV_WIDGET_WITH_HELP
{
    Q_OBJECT

public:
    /// The text takes no keyboard focus.
    explicit TOLV_LABEL_WITH_HELP(const QString& text, QWidget* parent = nullptr,
                                  Qt::WindowFlags flags = Qt::WindowFlags());
    explicit TOLV_LABEL_WITH_HELP(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_LABEL_WITH_HELP() override;

    QWidget* get_help_widget() const override;

    QLabel* m_widget; ///< the text, a child
};

/// A check box with a question mark.
class TOLV_EXPORT TOLV_CHECKBOX_WITH_HELP : public TOLV_WIDGET_WITH_HELP
{
    Q_OBJECT

public:
    explicit TOLV_CHECKBOX_WITH_HELP(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_CHECKBOX_WITH_HELP() override;

    QWidget* get_help_widget() const override;

    QCheckBox* m_widget; ///< the box, a child
};

/// A radio button with a question mark. Radio buttons that belong together want a QButtonGroup, as each is the only
/// child of its kind.
class TOLV_EXPORT TOLV_RADIOBUTTON_WITH_HELP : public TOLV_WIDGET_WITH_HELP
{
    Q_OBJECT

public:
    explicit TOLV_RADIOBUTTON_WITH_HELP(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_RADIOBUTTON_WITH_HELP() override;

    QWidget* get_help_widget() const override;

    QRadioButton* m_widget; ///< the button, a child
};
