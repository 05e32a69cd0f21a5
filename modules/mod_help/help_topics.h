#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// The pages of the help, and which of them tells about a topic.
class HELP_TOPICS
{
public:
    struct PAGE
    {
        QString title;
        QString file;       ///< name of the page's file
        QStringList topics; ///< what tools call it, beside its title
    };

    /// All pages in reading order, the first one being the entrance.
    static const QVector<PAGE>& get_pages();

    /// Address of a page.
    static QString get_url(const PAGE& page);

    /// The page about a topic. Mnemonics ("&File"), dots at the end and letter case do not count. A topic that begins
    /// with one that is known, such as the title of a window with the name of its parent behind it, is told by the
    /// longest such. Null where there is none.
    static const PAGE* find(const QString& topic);

    /// Pages that have all words of a text in their title or their text, in reading order.
    static QVector<const PAGE*> search(const QString& text);
};
