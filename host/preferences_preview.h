#pragma once

#include "preferences_sample.h"

#include <QScrollArea>

#include <vector>

class PREFERENCES_SESSION;
class PREFERENCES_TABLE;

/// What a tool's colours, fonts or lines look like on the tool's own ground: a sample for each of them, drawn with the
/// named resources as the tool draws with them. It follows the session.
class PREFERENCES_CANVAS : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive the widget.
    PREFERENCES_CANVAS(PREFERENCES_SESSION& session, const PREFERENCES_TABLE& table, QWidget* parent = nullptr);
    ~PREFERENCES_CANVAS() override;

    /// Shows a tool, with one of its rows marked; 0 for none.
    void set_current(const QString& group, int resource);
    /// Where the sample of a resource stands; empty for none.
    QRect get_rect(int resource) const;

signals:
    /// The user clicked on the sample of a resource.
    void chosen(int resource);
    void resized();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private slots:
    void refresh();

private:
    void make_samples();
    void arrange();
    void paint_marker(QPainter& painter, const QRect& rect, const QColor& color) const;

    const PREFERENCES_TABLE& m_table;
    QString m_group;
    int m_resource = 0;
    std::vector<PREFERENCES_SAMPLE> m_samples;
};

/// The canvas in a frame, scrolled so that the marked sample is seen.
class PREFERENCES_PREVIEW : public QScrollArea
{
    Q_OBJECT

public:
    /// Both must outlive the widget.
    PREFERENCES_PREVIEW(PREFERENCES_SESSION& session, const PREFERENCES_TABLE& table, QWidget* parent = nullptr);

    void set_current(const QString& group, int resource);
    PREFERENCES_CANVAS* get_canvas() const;

private slots:
    void scroll_to_current();

private:
    PREFERENCES_CANVAS* m_canvas;
    int m_resource = 0;
};
