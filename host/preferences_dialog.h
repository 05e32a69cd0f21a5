#pragma once

#include <QDialog>

class PREFERENCES_PAGE;
class PREFERENCES_SESSION;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class QTabWidget;

/// The preferences: the colours, fonts and lines of the drawing resources that a user may change. Each change is in
/// force at once in the whole tool. Save keeps all changes; Cancel, or closing the window, takes all of them back.
class PREFERENCES_DIALOG : public QDialog
{
    Q_OBJECT

public:
    enum PAGE
    {
        PAGE_COLORS,
        PAGE_FONTS,
        PAGE_LINES
    };

    explicit PREFERENCES_DIALOG(QWidget* parent = nullptr);
    ~PREFERENCES_DIALOG() override;

    void set_page(PAGE page);
    /// Shows a page ("colours", "fonts", "lines"), or the row with this enumerator's name. False where there is none.
    bool select(const QString& what);
    PREFERENCES_PAGE* get_page(PAGE page) const;

public slots:
    /// Saves. Where the settings cannot be written the user is told, and the dialog stays open.
    void accept() override;
    void reject() override;

signals:
    /// Other colours, fonts or lines are in force.
    void resources_changed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private slots:
    void show_state();
    void focus_search();

private:
    void create_pages();
    void create_buttons();
    PREFERENCES_PAGE* get_current_page() const;

    PREFERENCES_SESSION* m_session;
    QTabWidget* m_tabs;
    QLabel* m_state;
    QDialogButtonBox* m_buttons = nullptr;
    QPushButton* m_save = nullptr;
};
