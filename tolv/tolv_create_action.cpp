#include "tolv_create_action.h"

#include "tolv_global.h"
#include "tolv_icon.h"
#include "tolv_mem.h"

#include <QAction>
#include <QKeySequence>

TOLV_MEM_INITIALIZER();

namespace
{
/// What a row has beside its texts.
struct ACTION_LOOK
{
    TOLV_ICON_ENUM icon;
    QKeySequence::StandardKey standard_key; ///< QKeySequence::UnknownKey for none
    bool is_checkable;
};

#define TOLV_ACTION_STANDARD_NO_KEY(key) QKeySequence::UnknownKey
#define TOLV_ACTION_STANDARD_CUSTOM_KEY(key) QKeySequence::UnknownKey
#define TOLV_ACTION_STANDARD_STANDARD_KEY(key) QKeySequence::key
#define TOLV_ACTION_IS_PLAIN false
#define TOLV_ACTION_IS_CHECKABLE true
constexpr ACTION_LOOK LOOKS[TOLV_ACTION_COUNT + 1] = {
    {TOLV_ICON_NONE, QKeySequence::UnknownKey, false},
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    {icon, TOLV_ACTION_STANDARD_##key_kind(key), TOLV_ACTION_IS_##check},
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};
#undef TOLV_ACTION_IS_CHECKABLE
#undef TOLV_ACTION_IS_PLAIN
#undef TOLV_ACTION_STANDARD_STANDARD_KEY
#undef TOLV_ACTION_STANDARD_CUSTOM_KEY
#undef TOLV_ACTION_STANDARD_NO_KEY

/// Sets the key of a row. Returns its portable text, for the tool tip; empty for a row without a key.
QString set_shortcut(QAction* result, TOLV_ACTION_ENUM action)
{
    const QKeySequence::StandardKey standard_key = LOOKS[action].standard_key;
    if (standard_key != QKeySequence::UnknownKey)
    {
        const QKeySequence sequence(standard_key);
        result->setShortcut(sequence);
        return sequence.toString(QKeySequence::PortableText);
    }
    QString custom_text = QString::fromLatin1(tolv_get_custom_shortcut(action));
    if (!custom_text.isEmpty())
        result->setShortcut(QKeySequence(custom_text));
    return custom_text;
}

/// The tool tip of a row with a particular one or with a key; empty for all others.
QString make_tooltip(TOLV_ACTION_ENUM action, const QString& shortcut_text)
{
    QString tooltip = QString::fromLatin1(tolv_get_tooltip(action));
    if (tooltip.isEmpty() && !shortcut_text.isEmpty())
        tooltip = tolv_get_menu_text_without_symbol(action) + QLatin1String(" - ") + shortcut_text;
    return tooltip;
}
} // namespace

QAction* tolv_create_action(TOLV_ACTION_ENUM action, QObject* parent)
{
    auto* const result = new QAction(parent);
    if (action == TOLV_ACTION_NONE || static_cast<unsigned int>(action) > TOLV_ACTION_COUNT)
        return result;

    const ACTION_LOOK& look = LOOKS[action];
    result->setText(QString::fromLatin1(tolv_get_menu_text(action)));
    if (look.icon != TOLV_ICON_NONE)
        result->setIcon(tolv_get_icon(look.icon));
    const QString shortcut_text = set_shortcut(result, action);
    result->setStatusTip(QString::fromLatin1(tolv_get_statustip(action)));
    const QString tooltip = make_tooltip(action, shortcut_text);
    if (!tooltip.isEmpty())
        result->setToolTip(tooltip);
    result->setCheckable(look.is_checkable);
    return result;
}
