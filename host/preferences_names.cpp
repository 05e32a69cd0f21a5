#include "preferences_names.h"

#include <QCoreApplication>
#include <QStringList>

namespace
{
/// For translations.
const char* const CONTEXT = "PREFERENCES_NAME";

struct TOOL
{
    const char* prefix;
    const char* group;
};

// A prefix stands before the shorter ones that it begins with.
const TOOL TOOLS[] = {
    {"GENERAL", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "General")},
    {"EMPTY_VIEW", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "General")},
    {"GUI", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "General")},
    {"HEADER_FOOTER", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "General")},
    {"TABLE", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "General")},
    {"RUI", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "General")},
    {"PROG_BAR", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Progress bar")},
    {"MSW", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Messages")},
    {"MSG", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Messages")},
    {"PROJECT_NAVIGATOR", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Project navigator")},
    {"TXED", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Text editor")},
    {"RTLV", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "RTL viewer")},
    {"NLV", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Netlist viewer")},
    {"STMV", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "State machine viewer")},
    {"FLP", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Floorplan")},
    {"PINP", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Pin planner")},
    {"TIMA", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Timing analyser")},
    {"WAVE", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Waveform view")},
    {"MEME", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Memory editor")},
    {"CONS", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Tcl console")},
    {"SIMD", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Simulation debugger")},
    {"IPCT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "IP catalogue")},
    {"PRGM", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Programmer")},
    {"CNED", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Constraint editor")},
    {"BLKD", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Block design")},
    {"RPT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Reports and tables")},
    {"PWRA", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Power analysis")},
    {"CLKN", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Clock network")},
    {"HIER", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Hierarchy navigator")},
    {"FLOW", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Flow navigator")},
};

struct SPECIAL
{
    const char* name; ///< without "TOLV_"
    const char* title;
};

// Rows whose words, taken one by one, would not say what they are.
const SPECIAL SPECIALS[] = {
    {"EMPTY_VIEW_COLOR", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Empty view")},
    {"GUI_FONT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Windows")},
    {"GUI_BOLD_FONT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Windows, bold")},
    {"GUI_BOLD_UNDERLINE_FONT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Windows, bold and underlined")},
    {"GUI_UNDERLINE_FONT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Windows, underlined")},
    {"HEADER_FOOTER_FONT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Headers and footers of prints")},
    {"TABLE_MONOSPACE_FONT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Tables, fixed pitch")},
    {"RUI_ZOOM_DRAG_FONT", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Zoom drag")},
    {"PROJECT_NAVIGATOR_TREE_CTRL_COLOR", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Tree")},
    {"MSW_EXTRA_INFO_COLOR", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Additional information")},
    {"MSW_INFO_COLOR", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Information")},
    {"MSW_HIGHLIGHT_KEYWORD_COLOR", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Highlighted keyword")},
    {"MSW_HIGHLIGHT_KEYWORD_BG_COLOR", QT_TRANSLATE_NOOP("PREFERENCES_NAME", "Highlighted keyword background")},
};

/// Words that are not written in small letters.
QString get_word(const QString& word)
{
    static const char* const ABBREVIATIONS[] = {"RAM", "DSP", "PLL", "ASCII", "IP", "RTL"};
    for (const char* const abbreviation : ABBREVIATIONS)
    {
        if (word == QLatin1String(abbreviation))
            return word;
    }
    if (word == QLatin1String("IO"))
        return QStringLiteral("I/O");
    if (word == QLatin1String("BIDIR"))
        return QStringLiteral("bidirectional");
    return word == QLatin1String("DONT") ? QStringLiteral("don't") : word.toLower();
}

/// "NET_LINE" as "Net line".
QString get_title(const QString& words)
{
    QStringList result;
    for (const QString& word : words.split(QLatin1Char('_'), Qt::SkipEmptyParts))
        result.append(get_word(word));
    QString title = result.join(QLatin1Char(' '));
    if (!title.isEmpty())
        title[0] = title[0].toUpper();
    return title;
}
} // namespace

PREFERENCES_NAME PREFERENCES_NAME::from_enumerator(const QString& name)
{
    const QString short_name = name.startsWith(QLatin1String("TOLV_")) ? name.mid(5) : name;
    const QString words = short_name.left(short_name.lastIndexOf(QLatin1Char('_'))); // without the kind of resource
    PREFERENCES_NAME result{QCoreApplication::translate(CONTEXT, "Other"), get_title(words)};
    for (const TOOL& tool : TOOLS)
    {
        const QString prefix = QLatin1String(tool.prefix);
        if (words != prefix && !words.startsWith(prefix + QLatin1Char('_')))
            continue;
        result.group = QCoreApplication::translate(CONTEXT, tool.group);
        result.title = get_title(words.mid(prefix.size()));
        break;
    }
    for (const SPECIAL& special : SPECIALS)
    {
        if (short_name == QLatin1String(special.name))
            result.title = QCoreApplication::translate(CONTEXT, special.title);
    }
    return result;
}
