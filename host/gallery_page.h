#pragma once

#include "gallery_catalog.h"

#include <QWidget>

class GALLERY_FILTER;
class GALLERY_SAMPLES;
class QAbstractItemView;
class QLabel;

/// The things of one kind, as a grid or a table.
class GALLERY_PAGE : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive the page.
    GALLERY_PAGE(GALLERY_FILTER* filter, GALLERY_SAMPLES* samples, QWidget* parent = nullptr);

    GALLERY_KIND get_kind() const;
    QAbstractItemView* get_view() const;
    /// Size of icons in pixels.
    void set_icon_size(int size);

    /// The colours of everything.
    void set_ground(const QPalette& palette);

    /// Chooses a thing; false where there is none of this name, or the search hides it.
    bool select_name(const QString& name);
    /// Shows what the filter lets through now. The chosen thing stays chosen; where it is gone, or there was none, the
    /// first one is.
    void show_rows();
    /// The chosen thing; 0 and empty for none.
    int get_value() const;
    QString get_name() const;

signals:
    /// Another thing is chosen, or none any more.
    void current_changed();
    /// A thing was double-clicked, or Enter pressed on it.
    void activated();

private:
    QAbstractItemView* create_tiles();
    QAbstractItemView* create_table();
    void size_columns();

    GALLERY_FILTER* m_filter;
    GALLERY_SAMPLES* m_samples;
    QAbstractItemView* m_view = nullptr;
    QLabel* m_none;
};
