#pragma once

#include <QObject>
#include <QString>

class QMenu;

/// Fills a menu with the files that were opened last, each time that it opens.
class WORKBENCH_RECENT_MENU : public QObject
{
    Q_OBJECT

public:
    /// @param menu gets its title from here, too; the filler goes with it
    explicit WORKBENCH_RECENT_MENU(QMenu* menu);

signals:
    void file_chosen(const QString& file);

private slots:
    void fill();
    void choose();
    void clear_list();

private:
    void add_file(int number, const QString& file);

    QMenu* m_menu;
};
