#include "help_topics.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextDocumentFragment>

#include <algorithm>

namespace
{
struct ROW
{
    const char* file;
    const char* title;
    const char* topics; ///< divided by "|"
};

const ROW ROWS[] = {
    {"index.html", "Norvane Workbench", "Norvane|Help|Contents"},
    {"designs.html", "Opening designs", "File|Open|Open Design|Recent Files|Reload"},
    {"docking.html", "Windows that dock", "View|Customize|Windows|Dock"},
    {"hierarchy.html", "Hierarchy", "Project Navigator|Design Units|IP Components|Files|Navigator"},
    {"filter.html", "Filters", "Filter"},
    {"schematic.html", "Schematic", "Schematic View"},
    {"floorplan.html", "Floorplan", "Chip Floorplan|Chip"},
    {"zooming.html", "Zooming and moving", "Zoom|Bird's Eye View|Magnifying Glass"},
    {"tables.html", "Cells, ports and nets", "Cells|Ports|Nets|Totals|Properties|Module"},
    {"messages.html", "Messages", "Message"},
    {"console.html", "Tcl console", "Tcl Console|Tcl Scripts|Console"},
    {"status.html", "Status", "Tasks"},
    {"preferences.html", "Preferences", "Tools|Options|Colors|Fonts"},
    {"gallery.html", "Gallery", "Resource Gallery|Actions|Icons"},
};

QString normalise(const QString& topic)
{
    QString result = topic.toCaseFolded().simplified();
    result.remove(QLatin1Char('&'));
    while (result.endsWith(QLatin1Char('.')) || result.endsWith(QChar(0x2026)))
        result.chop(1);
    return result;
}

QString get_text(const HELP_TOPICS::PAGE& page)
{
    QFile file(HELP_TOPICS::get_url(page).mid(3)); // without "qrc"
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QTextDocumentFragment::fromHtml(QString::fromUtf8(file.readAll())).toPlainText();
}
} // namespace

const QVector<HELP_TOPICS::PAGE>& HELP_TOPICS::get_pages()
{
    static const QVector<PAGE> pages = []
    {
        QVector<PAGE> result;
        for (const ROW& row : ROWS)
        {
            const QString title = QString::fromLatin1(row.title);
            QStringList topics = QString::fromLatin1(row.topics).split(QLatin1Char('|'));
            topics.prepend(title);
            result.append({title, QString::fromLatin1(row.file), topics});
        }
        return result;
    }();
    return pages;
}

QString HELP_TOPICS::get_url(const PAGE& page)
{
    return QStringLiteral("qrc:/help/") + page.file;
}

const HELP_TOPICS::PAGE* HELP_TOPICS::find(const QString& topic)
{
    const QString wanted = normalise(topic);
    const PAGE* best = nullptr;
    int best_length = 0;
    for (const PAGE& page : get_pages())
    {
        for (const QString& known : page.topics)
        {
            const QString start = normalise(known);
            if (start.size() > best_length && wanted.startsWith(start))
            {
                best = &page;
                best_length = start.size();
            }
        }
    }
    return best;
}

QVector<const HELP_TOPICS::PAGE*> HELP_TOPICS::search(const QString& text)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVector<const PAGE*> result;
    for (const PAGE& page : get_pages())
    {
        const QString content = page.topics.join(QLatin1Char(' ')) + QLatin1Char(' ') + get_text(page);
        if (std::all_of(words.begin(), words.end(),
                        [&](const QString& word) { return content.contains(word, Qt::CaseInsensitive); }))
            result.append(&page);
    }
    return result;
}
