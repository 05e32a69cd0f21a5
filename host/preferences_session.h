#pragma once

#include "preferences_sample.h"

#include <QIcon>
#include <QObject>
#include <QSet>
#include <QVector>

#include <map>

/// The rows of one table of drawing resources that a user may change, and what was in force when the preferences were
/// opened. The values themselves stay where they are: in the drawing resources of the process.
class PREFERENCES_TABLE
{
public:
    struct ROW
    {
        int resource;  ///< an enumerator of the table
        QString group; ///< the tool
        QString title;
        QString name; ///< the enumerator's
    };

    PREFERENCES_TABLE();
    virtual ~PREFERENCES_TABLE();
    PREFERENCES_TABLE(const PREFERENCES_TABLE&) = delete;
    PREFERENCES_TABLE& operator=(const PREFERENCES_TABLE&) = delete;

    /// In the order of the table.
    const QVector<ROW>& get_rows() const;
    /// The row of a resource; null where a user may not change it.
    const ROW* find_row(int resource) const;

    /// The value in short.
    virtual QString get_value(int resource) const = 0;
    /// The value as a small picture of this size, in logical pixels.
    virtual QIcon get_icon(int resource, const QSize& size) const = 0;
    /// How the row looks where it is used.
    virtual PREFERENCES_SAMPLE make_sample(const ROW& row) const = 0;
    /// Whether the value differs from the built-in one.
    virtual bool is_changed(int resource) const = 0;
    /// Whether the value differs from what was in force at the opening.
    virtual bool is_unsaved(int resource) const = 0;
    /// How many changes a save would keep; a change that shows in several rows counts once.
    virtual int count_unsaved() const;
    /// Gives rows their built-in values.
    virtual void reset(const QSet<int>& resources) = 0;
    /// Gives all rows back what was in force at the opening.
    virtual void restore() = 0;
    /// What is in force now counts as the opening from now on.
    virtual void take_snapshot() = 0;

protected:
    /// Adds a row, whose group and title come from the enumerator's name.
    void add_row(int resource, const char* name);

private:
    QVector<ROW> m_rows;
    std::map<int, int> m_numbers; ///< of the rows, by resource
};

/// The colours.
class PREFERENCES_COLORS final : public PREFERENCES_TABLE
{
public:
    PREFERENCES_COLORS();

    QString get_value(int resource) const override;
    QIcon get_icon(int resource, const QSize& size) const override;
    PREFERENCES_SAMPLE make_sample(const ROW& row) const override;
    bool is_changed(int resource) const override;
    bool is_unsaved(int resource) const override;
    void reset(const QSet<int>& resources) override;
    void restore() override;
    void take_snapshot() override;

    static QColor get_color(int resource);

private:
    std::map<int, QColor> m_snapshot;
};

/// The fonts, each with its two colours: a font whose colour has been changed has been changed itself.
class PREFERENCES_FONTS final : public PREFERENCES_TABLE
{
public:
    /// @param colors outlives the object
    explicit PREFERENCES_FONTS(PREFERENCES_COLORS& colors);

    QString get_value(int resource) const override;
    QIcon get_icon(int resource, const QSize& size) const override;
    PREFERENCES_SAMPLE make_sample(const ROW& row) const override;
    bool is_changed(int resource) const override;
    bool is_unsaved(int resource) const override;
    /// Not counting the colours, which are changes of their own.
    int count_unsaved() const override;
    /// With the fonts' colours, also where other fonts share them.
    void reset(const QSet<int>& resources) override;
    /// Without the colours.
    void restore() override;
    void take_snapshot() override;

private:
    bool is_font_unsaved(int resource) const;
    /// The colour rows of a font that a user may change.
    static QSet<int> get_colors(int resource);

    PREFERENCES_COLORS& m_colors;
    std::map<int, QFont> m_snapshot;
};

/// The pens of the tools: their widths, and the named colours that they draw in.
class PREFERENCES_PENS final : public PREFERENCES_TABLE
{
public:
    PREFERENCES_PENS();

    QString get_value(int resource) const override;
    QIcon get_icon(int resource, const QSize& size) const override;
    PREFERENCES_SAMPLE make_sample(const ROW& row) const override;
    bool is_changed(int resource) const override;
    bool is_unsaved(int resource) const override;
    void reset(const QSet<int>& resources) override;
    void restore() override;
    void take_snapshot() override;

private:
    struct VALUE
    {
        int width;
        TOLV_COLOR_RESOURCE color;

        bool operator!=(const VALUE& other) const;
    };

    static VALUE get(int resource);
    static void set(int resource, const VALUE& value);

    std::map<int, VALUE> m_defaults;
    std::map<int, VALUE> m_snapshot;
};

/// What happens from the opening of the preferences to their end. Each change is in force at once in the whole process;
/// save() keeps all of them, restore() takes all of them back. Ending the session without either does nothing.
class PREFERENCES_SESSION : public QObject
{
    Q_OBJECT

public:
    explicit PREFERENCES_SESSION(QObject* parent = nullptr);
    ~PREFERENCES_SESSION() override;

    PREFERENCES_COLORS& get_colors();
    PREFERENCES_FONTS& get_fonts();
    PREFERENCES_PENS& get_pens();

    /// @param color alpha does not count; an invalid one is what a damaged setting leaves, and is taken as such
    void set_color(TOLV_COLOR_RESOURCE resource, const QColor& color);
    /// Takes the family, size, bold, italic and both colours of the font.
    void set_font(TOLV_FONT_RESOURCE resource, const TOLV_FONT& font);
    void set_pen(TOLV_PEN_RESOURCE resource, int width, TOLV_COLOR_RESOURCE color);
    /// @param table one of the three
    void reset(PREFERENCES_TABLE& table, const QSet<int>& resources);

    int count_unsaved() const;
    /// Stores the kinds of resources of which something has been changed. False where the registry cannot be written; the
    /// changes then stay in force, as unsaved ones.
    bool save();
    void restore();

signals:
    /// Something is in force that was not before.
    void changed();

private:
    void report_change();

    PREFERENCES_COLORS m_colors;
    PREFERENCES_FONTS m_fonts;
    PREFERENCES_PENS m_pens;
};
