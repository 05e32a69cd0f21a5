#pragma once

#include "gallery_catalog.h"

#include <QWidget>

class GALLERY_SAMPLES;

/// One thing at large, in the forms in which it appears: an icon in all sizes and modes, an action in a menu and a tool
/// bar, a movie playing. Over a cursor's picture the pointer takes that form.
class GALLERY_PREVIEW : public QWidget
{
    Q_OBJECT

public:
    /// @param samples must outlive the widget
    explicit GALLERY_PREVIEW(GALLERY_SAMPLES* samples, QWidget* parent = nullptr);

    /// @param value 0 for nothing
    void set_thing(GALLERY_KIND kind, int value);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paint_icon(QPainter* painter, const QRect& rect) const;
    void paint_action(QPainter* painter, const QRect& rect) const;
    void paint_caption(QPainter* painter, const QRect& rect, const QString& text) const;

    GALLERY_SAMPLES* m_samples;
    GALLERY_KIND m_kind = GALLERY_ACTIONS;
    int m_value = 0;
};
