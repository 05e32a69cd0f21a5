#pragma once

#include "gallery_catalog.h"
#include "tolv_dialog.h"

class GALLERY_DETAILS;
class GALLERY_FILTER;
class GALLERY_PAGE;
class GALLERY_SAMPLES;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTreeWidget;

/// All that the library has by name, for those who build tools with it: actions, icons, cursors, pixmaps, movies,
/// colours, pens, brushes and fonts, each with its picture, its facts, and the C++ that asks for it. A search goes
/// through all of them at once. Models and pages are made when they are first looked at.
class GALLERY_WINDOW : public TOLV_DIALOG
{
    Q_OBJECT

public:
    explicit GALLERY_WINDOW(QWidget* parent = nullptr);
    ~GALLERY_WINDOW() override;

    /// Shows a kind ("actions", "icons", ...), or the thing with this enumerator's name. False where there is none; the
    /// search ends where it would hide it.
    bool select(const QString& what);
    /// A size for this time: it is not kept, and the one that was kept does not count.
    void use_size(const QSize& size);
    GALLERY_KIND get_kind() const;
    GALLERY_PAGE* get_page(GALLERY_KIND kind);

public slots:
    /// Shows the colours, pens, brushes and fonts as they are in force now.
    void apply_drawing_resources();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private slots:
    void search(const QString& text);
    void show_kind();
    void show_current();
    void apply_icon_size();
    void apply_ground();
    void focus_search();
    void copy_name();
    void copy_call();

private:
    QWidget* create_tools();
    void create_kinds();
    void create_find_action();
    void add_copy_actions(GALLERY_PAGE* page);
    GALLERY_FILTER* get_filter(GALLERY_KIND kind);
    int count_matches(GALLERY_KIND kind);
    void show_counts();
    void show_status();
    void play_movies();
    void copy(const QString& text);

    GALLERY_SAMPLES* m_samples;
    QLineEdit* m_search;
    QComboBox* m_size;
    QCheckBox* m_dark;
    QTreeWidget* m_kinds;
    QStackedWidget* m_stack;
    GALLERY_DETAILS* m_details;
    QLabel* m_status;
    GALLERY_FILTER* m_filters[GALLERY_KIND_COUNT] = {}; ///< null until they are needed
    GALLERY_PAGE* m_pages[GALLERY_KIND_COUNT] = {};     ///< likewise
};
