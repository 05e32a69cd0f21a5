#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>
#include <QVector>

/// What the library has by name, kind by kind.
enum GALLERY_KIND : int
{
    GALLERY_ACTIONS,
    GALLERY_ICONS,
    GALLERY_CURSORS,
    GALLERY_PIXMAPS,
    GALLERY_MOVIES,
    GALLERY_COLORS,
    GALLERY_PENS,
    GALLERY_BRUSHES,
    GALLERY_FONTS,
    GALLERY_KIND_COUNT
};

/// A thing of some kind.
struct GALLERY_ENTRY
{
    int value = 0;     ///< the enumerator
    QString name;      ///< its name
    QStringList texts; ///< what stands in the columns
    QIcon icon;        ///< of actions and icons
};

/// A line of a description.
struct GALLERY_FACT
{
    QString title;
    QString text;
};

/// The tables of the library as the gallery shows them. All values are those in force when they are asked for.
class GALLERY_CATALOG
{
public:
    /// Title of a kind ("Icons"), one thing of it ("icon"), and its name on the command line ("icons").
    static QString get_title(GALLERY_KIND kind);
    static QString get_singular(GALLERY_KIND kind);
    static QString get_key(GALLERY_KIND kind);

    static int get_count(GALLERY_KIND kind);
    /// Whether the pictures are what matters: they stand in a grid, all others in a table.
    static bool has_tiles(GALLERY_KIND kind);
    /// Titles of the columns; a grid has one.
    static QStringList get_columns(GALLERY_KIND kind);
    /// The column with the name.
    static int get_name_column(GALLERY_KIND kind);
    /// All things of a kind, in the order of the table.
    static QVector<GALLERY_ENTRY> make_entries(GALLERY_KIND kind);

    /// All that there is to know of a thing beside its name.
    static QVector<GALLERY_FACT> describe(GALLERY_KIND kind, int value);
    /// How C++ asks for it: "tolv_get_icon(TOLV_COPY_ICON)".
    static QString get_call(GALLERY_KIND kind, const QString& name);
};
