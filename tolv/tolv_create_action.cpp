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

/// Whether a row has a key. That of a standard command may be none on some platforms; it counts as one all the same.
bool has_key(TOLV_ACTION_ENUM action)
{
    return LOOKS[action].standard_key != QKeySequence::UnknownKey || *tolv_get_custom_shortcut(action) != '\0';
}

/// Sets the key of a row that has one. Returns its portable text, for the tool tip.
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
    result->setShortcut(QKeySequence(custom_text));
    return custom_text;
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
    QString tooltip;
    if (has_key(action))
        tooltip = tolv_get_menu_text_without_symbol(action) + QLatin1String(" - ") + set_shortcut(result, action);
    if (action == TOLV_HELP_ACTION) // the window has an F1 of its own
        result->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    result->setStatusTip(QString::fromLatin1(tolv_get_statustip(action)));
    if (action == TOLV_NORVANE_HELP_ACTION)
        tooltip = QString::fromLatin1(tolv_get_tooltip(action));
    if (!tooltip.isEmpty())
        result->setToolTip(tooltip);
    result->setCheckable(look.is_checkable);
    return result;
}
