#pragma once

#include "gallery_catalog.h"

#include <QWidget>

class GALLERY_PREVIEW;
class GALLERY_SAMPLES;
class QPushButton;
class QTextBrowser;

/// What there is to know of the chosen thing: its preview, its name, its facts, and how C++ asks for it.
class GALLERY_DETAILS : public QWidget
{
    Q_OBJECT

public:
    /// @param samples must outlive the widget
    explicit GALLERY_DETAILS(GALLERY_SAMPLES* samples, QWidget* parent = nullptr);

    /// @param value 0 for nothing
    void set_thing(GALLERY_KIND kind, int value, const QString& name);
    /// What the Tab key goes to, in its order.
    QWidgetList get_tab_chain() const;
    /// The colours under the preview.
    void set_ground(const QPalette& palette);

signals:
    void copy_name_wanted();
    void copy_call_wanted();

private:
    QPushButton* create_button(const char* object_name, const QString& text, const QString& tool_tip,
                               const char* signal);

    GALLERY_PREVIEW* m_preview;
    QTextBrowser* m_text;
    QPushButton* m_copy_name;
    QPushButton* m_copy_call;
};
