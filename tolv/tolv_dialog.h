#pragma once

#include "tolv_export.h"

#include <QDialog>
#include <QString>

#include <string>

/// The base of all dialogs. It keeps its place and size between two runs of a tool, and it opens the help on F1 and on
/// a press of a Help button among its direct children: a QPushButton with the text "Help", to the letter, or a
/// QDialogButtonBox with a button of that role. The button is found when the child is polished, so it may be added at
/// any time before it is first shown.
///
/// The geometry is restored at the first show and saved once in the object's life, at the first of done(), the closing
/// of the window, and the destructor. It is kept in the registry (SUB_KEY_GUI) under the program's file name, the window
/// title (or m_geometry_key where a subclass sets it, as it should where the title changes with the content) and
/// "DialogGeometry", blanks as "_". A value that cannot be read leaves the geometry that Qt chose.
class TOLV_EXPORT TOLV_DIALOG : public QDialog
{
    Q_OBJECT

public:
    /// The title bar gets no context help button, whatever the flags; the lower right corner gets a size grip.
    explicit TOLV_DIALOG(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_DIALOG() override;

    /// Saves the geometry, or restores it, now and whatever is pending.
    void restore_save_geometry(bool save);
    /// Saves the geometry; not a second time in the object's life.
    void save_geometry();
    /// Topic of the dialog's help, local 8-bit encoding: the window title, unless a subclass has a better one.
    virtual std::string get_help_topic_string();

public slots:
    /// Opens the help on the topic.
    void help_button_clicked();
    void done(int result) override;

protected:
    /// Closing the window accepts the event and leaves it at that: unlike QDialog it does not go through reject(), which
    /// is meant.
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void childEvent(QChildEvent* event) override;

    bool m_restore_pending = true; ///< the geometry is still to be restored; a subclass that wants none clears it
    bool m_save_pending = true;    ///< the geometry is still to be saved
    QString m_geometry_key;        ///< stands in the key in place of the window title, where it is not empty

private:
    QString get_geometry_key() const;
    void wire_help(QObject* child);
};
