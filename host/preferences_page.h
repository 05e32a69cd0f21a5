#pragma once

#include <QModelIndex>
#include <QWidget>

class PREFERENCES_EDITOR;
class PREFERENCES_FILTER;
class PREFERENCES_MODEL;
class PREFERENCES_PREVIEW;
class PREFERENCES_SESSION;
class PREFERENCES_TABLE;
class QAction;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

/// A page of the preferences: at the left the rows of a table with a search, at the right the preview of the tool and
/// the editor of the chosen row.
class PREFERENCES_PAGE : public QWidget
{
    Q_OBJECT

public:
    /// What the page says about its rows.
    struct TEXTS
    {
        QString list;      ///< accessible name of the rows
        QString reset_row; ///< texts of the menu of resets
        QString reset_all;
    };

    /// @param session outlives the page
    /// @param table   one of the session's
    /// @param editor  of this table's rows; the page owns it
    PREFERENCES_PAGE(PREFERENCES_SESSION& session, PREFERENCES_TABLE& table, PREFERENCES_EDITOR* editor,
                     const TEXTS& texts, QWidget* parent = nullptr);

    /// Chooses a row. False where there is none, or the search hides it.
    bool select_resource(int resource);
    /// The same by the enumerator's name.
    bool select_name(const QString& name);
    /// The chosen row; 0 for none, or for that of a tool.
    int get_resource() const;
    /// What can be typed into to find rows.
    QLineEdit* get_search() const;

private slots:
    void show_matches(const QString& text);
    void show_current();
    void take_sample(int resource);
    void begin_change(const QModelIndex& index);
    void enable_resets();
    void reset_row();
    void reset_group();
    void reset_all();

private:
    QWidget* create_list(const TEXTS& texts);
    QWidget* create_details(PREFERENCES_SESSION& session, const TEXTS& texts);
    void create_resets(QPushButton* button, const TEXTS& texts);
    void size_columns();
    void select_first();
    QString get_group() const;

    PREFERENCES_SESSION& m_session;
    PREFERENCES_TABLE& m_table;
    PREFERENCES_MODEL* m_model;
    PREFERENCES_FILTER* m_filter;
    PREFERENCES_EDITOR* m_editor;
    PREFERENCES_PREVIEW* m_preview = nullptr;
    QLineEdit* m_search = nullptr;
    QTreeView* m_view = nullptr;
    QLabel* m_none = nullptr; ///< says that nothing has been found
    QLabel* m_title = nullptr;
    QAction* m_reset_row = nullptr;
    QAction* m_reset_group = nullptr;
    QAction* m_reset_all = nullptr;
};
