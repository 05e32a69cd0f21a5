#pragma once

#include "tolv_export.h"

#include <QBitArray>
#include <QMap>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTreeView>

#include <fstream>
#include <optional>

class CFGQ_REGISTRY_KEY;
class QLineEdit;
class QMenu;
class QMouseEvent;
class QStandardItem;
class TOLV_TREE_HEADER_VIEW;
class TOLV_TREE_ITEM_DELEGATE;

/// Flags of a tree view's look, for its constructor and set_style().
enum TOLV_TREE_STYLE : unsigned int
{
    /// Grid lines around the cells; rows are one pixel higher.
    TOLV_TREE_STYLE_GRID = 0x1,
    /// No branch indicators.
    TOLV_TREE_STYLE_NO_BRANCHES = 0x10,
    /// Icons of items can act as buttons.
    TOLV_TREE_STYLE_CLICKABLE_ICONS = 0x100,
    /// Items never draw the focus rectangle.
    TOLV_TREE_STYLE_NO_FOCUS_RECT = 0x1000
};

/// The tree widget that hosts build on, directly or by a class derived from it. It shows any model.
///
/// Columns: a menu on the header lets the user show and hide all columns but the first, and a host that calls
/// load_column_visibility_from_registry() at the start and save_column_visibility_to_registry() at the end has hidden
/// columns and widths kept in the user's registry. The view calls neither by itself.
///
/// Expansion memory: which items are expanded can be remembered by path and brought back when the same items stand in
/// the model again, say around a filtering or a rebuilding of the model. It lives as long as the view. An item's path is
/// the texts from the top down to it, joined by "||", in a QStandardItemModel; in all other models, filters included, it
/// is the item's own text. Texts are not escaped, so items with the same path share their entry.
///
/// The filter signals are the view's side of a filter line. The view never emits them; a host or a derived class does,
/// and connects them to the filter model.
///
/// Keyboard: where single cells can be selected (QAbstractItemView::SelectItems), the arrow keys go from cell to cell and
/// never expand or collapse, "+" and "-" do. Otherwise the keys are Qt's.
///
/// Clickable icons: with TOLV_TREE_STYLE_CLICKABLE_ICONS, and a TOLV_TREE_ITEM_DELEGATE, a press on an icon does not
/// select the item, whatever its roles, which is meant. The release on the same icon emits icon_clicked() if the item is
/// enabled and its TOLV_TREE_ROLE_CLICKABLE_ICON is true. The configuration's "test_clickable_icons", read once in the
/// process, makes all trees and items react so far as if they had the flag.
///
/// Tool tips: a cell shows its Qt::ToolTipRole, or else its whole text if the column is too narrow for it.
///
/// Operations that need a model are the internal error "view_model != NULL" without one.
class TOLV_EXPORT TOLV_TREE_VIEW : public QTreeView
{
    Q_OBJECT

public:
    /// `style` holds flags of TOLV_TREE_STYLE.
    explicit TOLV_TREE_VIEW(QWidget* parent = nullptr, unsigned int style = 0);
    ~TOLV_TREE_VIEW() override;

    /// Help on what stands under the focus in the tree: a derived class that has shown it answers true. Here nothing is
    /// shown, and the main window shows its own.
    virtual bool handle_f1_help();
    /// Fills the menu on the header: a checkable entry for each column but the first one, without those that have no
    /// title or are always hidden. Nothing is added where there are fewer than two columns. Internal errors
    /// "menu != NULL", "view_model != NULL", "view_header != NULL".
    virtual void populate_column_selection_menu(QMenu* menu);
    /// For derived classes that follow check marks: the item of this path has been checked. Nothing happens here, and
    /// nothing calls it.
    virtual void item_check_state_changed(QString path);

    // ---- Look ----

    /// Flags of TOLV_TREE_STYLE.
    void set_style(unsigned int style);
    unsigned int get_style() const;
    /// The pixels that each row has for its grid line: 1 with TOLV_TREE_STYLE_GRID, else 0.
    int get_grid_line_height() const;

    /// Qt's size of an item, with the pixels of the grid line in its height where it is valid.
    QSize sizeHintForIndex(const QModelIndex& index) const;
    /// By how many levels an item is indented: 0 at the top and in all columns but the first. For an invalid index 0, or
    /// -1 in a view without a model.
    int get_item_level(const QModelIndex& index) const;
    /// The item whose icon is pressed; invalid but between press and release.
    QModelIndex get_pressed_icon_index() const;

    /// Scrolls up and down only: the columns stay where they are.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

    // ---- Columns ----

    /// The name under which the columns are kept in the registry; while it is empty, that is the object name of the
    /// parent widget.
    void set_registry_string(const QString& registry_string);
    /// That name as it was set.
    QString get_registry_string() const;

    /// Stores for each column whether it is hidden and how wide it is (0 for a hidden one), under its title: columns of
    /// one title share their values. Internal errors, here and in the next: "parent_widget != NULL" for a view without a
    /// parent, "!registry_string.isEmpty()" where neither the registry string nor the parent's object name is set,
    /// "view_model != NULL", "view_header != NULL".
    void save_column_visibility_to_registry();
    /// Hides and shows columns as they were stored, those always hidden excepted, and sets their widths. A column of
    /// which nothing usable is stored keeps its state and gets the width of its contents.
    void load_column_visibility_from_registry();

    /// Marks a column as one that the registry and the menu never show. The mark does not hide it. Marks of higher
    /// columns are forgotten by the call, so mark from the left to the right. A negative column is ignored.
    void set_column_always_hidden(int column, bool hidden);
    /// Whether a column is so marked; false for a column that does not exist.
    bool is_column_always_hidden(int column) const;

    // ---- Paths and expansion memory ----

    /// The path of an item, see above; empty for an invalid index. An item that is null, or that does not stand in a
    /// QStandardItemModel shown here, has an empty path.
    QString get_path(QModelIndex index) const;
    QString get_path(QStandardItem* item) const;

    /// 2 is Qt::Checked, 0 is Qt::Unchecked, everything else Qt::PartiallyChecked.
    Qt::CheckState get_check_state(Qt::CheckState state) const;
    Qt::CheckState get_check_state(int state) const;

    /// Remembers the whole tree: calls the next one for each row at the top. With `clear` that empties the memory each
    /// time, so that only the last of these rows is remembered; this is meant.
    void save_expandable_state(bool clear);
    /// Remembers one item of a QStandardItemModel with all below it; in other models what is below, without the item
    /// itself. For an invalid index all items. With `clear` what was remembered before is forgotten.
    void save_expandable_state(const QModelIndex& index, bool clear);
    /// The same for an item of a QStandardItemModel, or, with a null item, for an index of any model. An item without
    /// children is remembered as expanded; this is meant. The flag has no effect.
    void save_expandable_state(QStandardItem* item, QModelIndex index, bool clear);

    /// Brings the whole tree back. What is not remembered is collapsed. Returns whether the tree has rows and anything
    /// is remembered; false without a model.
    bool restore_expandable_state();
    /// The same for one item with all below it, for an invalid index for all items; in models other than
    /// QStandardItemModel for the one item alone. Returns whether anything is remembered.
    bool restore_expandable_state(const QModelIndex& index);
    /// The same for an item of a QStandardItemModel. With m_is_check_state_tracked each item gets the state
    /// Qt::PartiallyChecked: derived classes restore their own marks.
    void restore_expandable_state(QStandardItem* item);

    /// Whether the item was remembered as expanded; false for an invalid index and an unknown item.
    bool was_item_expanded_previously(const QModelIndex& index) const;

    // ---- Copying ----

    /// Copies the selected rows to the clipboard, as text and as instance names, in the order of the tree. A row counts
    /// if its first cell is selected; without such a row the clipboard stays as it is. A line is the prefix (local 8-bit
    /// encoding, null for none), the text of the first cell, a tab, and with `all_columns` the text of each further
    /// column that is not hidden, a tab behind each. An instance name is the prefix and the text.
    void on_copy_selection(bool all_columns, const char* prefix);

    /// Writes a row and all below it, visible columns in the order of their numbers, a tab behind each, in the local
    /// 8-bit encoding. From depth 1 on, "|" and as many "-" as the depth stand before the first column; children are one
    /// deeper. An invalid index writes all rows at the top, one deeper than `depth`.
    void dump_tree_view_data(const QModelIndex& index, std::ofstream& out, int depth);

public slots:
    /// Shows the menu of columns where the pointer is; `position` has no influence.
    void custom_context_menu(const QPoint& position);
    /// Shows a hidden column, as wide as its contents, or hides a visible one, and emits column_visibility_changed(). A
    /// column that does not exist is ignored.
    void perform_signal_mapper_menu_action(int index);
    /// Emits header_mouse_enter().
    void header_enter();

signals:
    /// The user has shown or hidden a column.
    void column_visibility_changed(int index);
    /// A double click, before the view reacts to it. The event lives as long as the signal.
    void mouse_double_click(QMouseEvent* event);
    /// For a filter line: the filter is keyword, match case, filter, as the filter model's start_filter() takes it.
    void filter_option_changed(QString, bool, bool);
    /// For a filter line: the filter is taken away.
    void clear_filter();
    /// For a filter line: texts to choose from, and the present one.
    void set_filter_text_changed(QStringList, QString);
    /// The pointer has entered the header.
    void header_mouse_enter();
    /// The icon of an item was clicked, in a tree with clickable icons.
    void icon_clicked(QModelIndex idx);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;

    /// Whether the expansion memory has check states in it, too; derived classes set it.
    bool m_is_check_state_tracked = false;
    /// The expansion memory: path to whether the item was expanded.
    QMap<QString, bool> m_expansion_memory;
    /// Path to check state. It is written with the expansion memory, and read by derived classes alone.
    QMap<QString, int> m_check_state_memory;
    /// An editor that is never shown, for derived classes.
    QLineEdit* m_line_edit;
    /// Flags of TOLV_TREE_STYLE.
    unsigned int m_style;
    /// The configuration's "tolv_tree_enable_tooltip", for derived classes.
    bool m_is_tooltip_enabled;
    /// The header, owned by the view; null once a host has set another one.
    QPointer<TOLV_TREE_HEADER_VIEW> m_header;
    /// Marks of columns that are always hidden; columns beyond its size have none.
    QBitArray m_always_hidden_columns;
    /// See get_pressed_icon_index().
    QPersistentModelIndex m_pressed_icon_index;
    /// See set_registry_string().
    QString m_registry_string;

private:
    class RESTORING;

    bool has_style(TOLV_TREE_STYLE flag) const;
    void draw_grid(QPainter* painter, const QStyleOptionViewItem& option) const;
    QModelIndex get_cell_beside(const QModelIndex& index, int step) const;
    QModelIndex get_cell_in_next_row(CursorAction action, Qt::KeyboardModifiers modifiers);
    const TOLV_TREE_ITEM_DELEGATE* get_icon_delegate(const QModelIndex& index) const;
    bool is_on_icon(const TOLV_TREE_ITEM_DELEGATE& delegate, const QModelIndex& index, const QPoint& position) const;
    bool is_text_clipped(const QModelIndex& index) const;
    bool has_model() const;
    QString get_column_title(int column) const;
    std::optional<CFGQ_REGISTRY_KEY> open_registry_key() const;
    void remember(const QModelIndex& index, const QString& path);
    void remember_with_children(QStandardItem* item, const QModelIndex& index, const QString& path);
    void restore_item(QStandardItem* item, const QString& path, RESTORING& restoring);
    void restore_index(const QModelIndex& index, RESTORING& restoring);
};
