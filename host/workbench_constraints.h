#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class ASSIGNMENT_MODEL;
class ASSIGNMENT_VIEW;
class QAction;
class QMenu;
class QWidget;

/// The constraints of the open design: the table of its assignments, the commands on it, and the file that they are kept
/// in. That lies beside the design, with the ending ".constraints", unless the user says otherwise. It is read with the
/// design. Assignments that are not saved are never dropped without a question.
class WORKBENCH_CONSTRAINTS : public QObject
{
    Q_OBJECT

public:
    /// @param window parent of the table and of questions to the user
    explicit WORKBENCH_CONSTRAINTS(QWidget* window);
    ~WORKBENCH_CONSTRAINTS() override;

    ASSIGNMENT_MODEL* get_model() const;
    /// The table with its buttons, for a dock window. It goes with this object.
    QWidget* get_panel() const;
    /// Adds the commands on files to a menu.
    void fill_menu(QMenu* menu);

    /// Another design is open: its constraints are read, if there are any. Unsaved ones of another design stay, are told
    /// of, and are saved beside that design.
    void set_design(const QString& file);
    /// Reads a file of constraints in place of what is in the table. A bad one is complained about, and changes nothing.
    bool open_file(const QString& file);
    /// File that the assignments come from or were saved to; empty for none.
    const QString& get_file() const;

    /// Asks what to do about assignments that are not saved. Returns false where the user wants to go back.
    bool confirm_close();

public slots:
    /// Saves to the file they come from, else beside the design, else where the user says.
    bool save();
    bool save_as();
    void ask_for_file();

signals:
    /// Something that the user may want to know.
    void noted(const QString& text);
    /// Nothing has come of what the user wanted, who can see so in the table.
    void warned(const QString& text);
    /// Something went wrong.
    void failed(const QString& text);

private slots:
    void update_actions();

private:
    QAction* add_action(QAction* action, const QString& object_name, const char* slot);
    bool save_to(const QString& file);

    QWidget* m_window;
    ASSIGNMENT_MODEL* m_model;
    QPointer<QWidget> m_panel;
    ASSIGNMENT_VIEW* m_view;
    QAction* m_remove = nullptr;
    QAction* m_copy = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_save;
    QString m_design; ///< that the assignments belong to; empty for none
    QString m_file;
};
