#include "tolv_tree_view.h"

#include "tolv_global.h"
#include "tolv_mem.h"
#include "tolv_tree_header_view.h"
#include "tolv_tree_item_delegate.h"
#include "tolv_tree_view_p.h"

#include "cfg.h"
#include "cfgq_registry.h"

#include <QLineEdit>
#include <QMenu>

TOLV_MEM_INITIALIZER();

namespace
{
/// The widest section that a QHeaderView takes.
constexpr int MAXIMUM_COLUMN_WIDTH = (1 << 20) - 1;

QString get_visibility_name(const QString& title)
{
    return title + QLatin1String("_column_visibility");
}

QString get_size_name(const QString& title)
{
    return title + QLatin1String("_column_size");
}

/// A stored number, also one that came from a store of texts; nothing where the value is none.
std::optional<qlonglong> to_number(const QVariant& stored)
{
    switch (static_cast<QMetaType::Type>(stored.type()))
    {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::QString:
        break;
    default:
        return std::nullopt;
    }
    bool is_number = false;
    const qlonglong number = stored.toLongLong(&is_number);
    return is_number ? std::optional<qlonglong>(number) : std::nullopt;
}

std::optional<bool> to_switch(const QVariant& stored)
{
    if (stored.type() == QVariant::Bool)
        return stored.toBool();
    const QString text = stored.type() == QVariant::String ? stored.toString() : QString();
    if (text == QLatin1String("true") || text == QLatin1String("false"))
        return text == QLatin1String("true");
    const std::optional<qlonglong> number = to_number(stored);
    if (!number.has_value() || *number < 0 || *number > 1)
        return std::nullopt;
    return *number == 1;
}

std::optional<int> to_width(const QVariant& stored)
{
    const std::optional<qlonglong> number = to_number(stored);
    if (!number.has_value() || *number < 0 || *number > MAXIMUM_COLUMN_WIDTH)
        return std::nullopt;
    return static_cast<int>(*number);
}

/// A stored value; nothing where none is stored.
std::optional<QVariant> read_value(const CFGQ_REGISTRY_KEY& key, const QString& name)
{
    QVariant variant;
    if (!key.get_value(name, &variant))
        return std::nullopt;
    TOLV_TREE_VIEW_CHECK(variant.isValid(), "variant.isValid()");
    return variant;
}

QLineEdit* make_hidden_line_edit(QWidget* parent)
{
    auto* const line_edit = new QLineEdit(parent);
    line_edit->setReadOnly(true);
    line_edit->setFocusPolicy(Qt::NoFocus);
    line_edit->setAttribute(Qt::WA_TransparentForMouseEvents);
    line_edit->hide();
    return line_edit;
}
} // namespace

TOLV_TREE_VIEW::TOLV_TREE_VIEW(QWidget* parent, unsigned int style)
    : QTreeView(parent), m_line_edit(make_hidden_line_edit(this)), m_style(style),
      m_is_tooltip_enabled(cfg_is_on("tolv_tree_enable_tooltip"))
{
    setAttribute(Qt::WA_MouseTracking);
    setUniformRowHeights(true);
    setItemDelegate(new TOLV_TREE_ITEM_DELEGATE(this));

    m_header = new TOLV_TREE_HEADER_VIEW(this);
    m_header->setContextMenuPolicy(Qt::CustomContextMenu);
    m_header->setStretchLastSection(true);
    setHeader(m_header);
    TOLV_SAFE_CONNECT(m_header, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(custom_context_menu(QPoint)));
    TOLV_SAFE_CONNECT(m_header, SIGNAL(mouse_enter()), this, SLOT(header_enter()));

    // A tree that has lost the focus keeps its background.
    QPalette own_palette = palette();
    own_palette.setBrush(QPalette::Inactive, QPalette::Base,
                         QBrush(own_palette.color(QPalette::Active, QPalette::Base), Qt::SolidPattern));
    setPalette(own_palette);
}

TOLV_TREE_VIEW::~TOLV_TREE_VIEW() = default;

bool TOLV_TREE_VIEW::handle_f1_help()
{
    return false;
}

void TOLV_TREE_VIEW::item_check_state_changed(QString /*path*/) // NOLINT(performance-unnecessary-value-param)
{
}

bool TOLV_TREE_VIEW::has_model() const
{
    const QAbstractItemModel* const view_model = model();
    TOLV_TREE_VIEW_CHECK(view_model != nullptr, "view_model != NULL");
    return view_model != nullptr;
}

// ---- Columns --------------------------------------------------------------------------------------------------------

void TOLV_TREE_VIEW::set_registry_string(const QString& registry_string)
{
    m_registry_string = registry_string;
}

QString TOLV_TREE_VIEW::get_registry_string() const
{
    return m_registry_string;
}

QString TOLV_TREE_VIEW::get_column_title(int column) const
{
    return model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

/// The folder of this view's columns; nothing where a report on what is missing has returned.
std::optional<CFGQ_REGISTRY_KEY> TOLV_TREE_VIEW::open_registry_key() const
{
    const QWidget* const parent_widget = parentWidget();
    TOLV_TREE_VIEW_CHECK(parent_widget != nullptr, "parent_widget != NULL");
    if (parent_widget == nullptr)
        return std::nullopt;
    const QString registry_string = m_registry_string.isEmpty() ? parent_widget->objectName() : m_registry_string;
    TOLV_TREE_VIEW_CHECK(!registry_string.isEmpty(), "!registry_string.isEmpty()");
    if (registry_string.isEmpty() || !has_model())
        return std::nullopt;
    const QHeaderView* const view_header = header();
    TOLV_TREE_VIEW_CHECK(view_header != nullptr, "view_header != NULL");
    if (view_header == nullptr)
        return std::nullopt;
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS),
                             registry_string.toLocal8Bit().constData());
}

void TOLV_TREE_VIEW::save_column_visibility_to_registry()
{
    std::optional<CFGQ_REGISTRY_KEY> key = open_registry_key();
    if (!key.has_value())
        return;
    for (int column = 0; column < header()->count(); ++column)
    {
        const QString title = get_column_title(column);
        // True for a hidden column, whatever the name says.
        key->set_value(get_visibility_name(title), isColumnHidden(column));
        key->set_value(get_size_name(title), columnWidth(column));
    }
}

void TOLV_TREE_VIEW::load_column_visibility_from_registry()
{
    const std::optional<CFGQ_REGISTRY_KEY> key = open_registry_key();
    if (!key.has_value())
        return;
    for (int column = 0; column < header()->count(); ++column)
    {
        const QString title = get_column_title(column);
        const std::optional<QVariant> visibility = read_value(*key, get_visibility_name(title));
        const std::optional<bool> is_hidden = visibility.has_value() ? to_switch(*visibility) : std::nullopt;
        if (visibility.has_value() && is_column_always_hidden(column))
            setColumnHidden(column, true);
        else if (is_hidden.has_value())
            setColumnHidden(column, *is_hidden);

        const std::optional<QVariant> size = read_value(*key, get_size_name(title));
        const std::optional<int> width = size.has_value() ? to_width(*size) : std::nullopt;
        if (width.has_value())
            setColumnWidth(column, *width);
        else
            resizeColumnToContents(column);
    }
}

void TOLV_TREE_VIEW::set_column_always_hidden(int column, bool hidden)
{
    if (column < 0)
        return;
    // Shrinks, too: marks of higher columns are forgotten, on purpose.
    m_always_hidden_columns.resize(column + 1);
    m_always_hidden_columns.setBit(column, hidden);
}

bool TOLV_TREE_VIEW::is_column_always_hidden(int column) const
{
    return column >= 0 && column < m_always_hidden_columns.size() && m_always_hidden_columns.testBit(column);
}

// ---- The menu of columns --------------------------------------------------------------------------------------------

void TOLV_TREE_VIEW::populate_column_selection_menu(QMenu* menu)
{
    TOLV_TREE_VIEW_CHECK(menu != nullptr, "menu != NULL");
    if (menu == nullptr || !has_model())
        return;
    const QHeaderView* const view_header = header();
    TOLV_TREE_VIEW_CHECK(view_header != nullptr, "view_header != NULL");
    if (view_header == nullptr || view_header->count() < 2)
        return;
    for (int column = 1; column < view_header->count(); ++column)
    {
        QString title = get_column_title(column);
        if (is_column_always_hidden(column) || title.isEmpty())
            continue;
        // A title has no mnemonic: its ampersands are shown.
        QAction* const menu_action = menu->addAction(title.replace(QLatin1Char('&'), QLatin1String("&&")));
        TOLV_TREE_VIEW_CHECK(menu_action != nullptr, "menu_action != NULL");
        if (menu_action == nullptr)
            continue;
        menu_action->setCheckable(true);
        menu_action->setChecked(!isColumnHidden(column));
        connect(menu_action, &QAction::triggered, this, [this, column] { perform_signal_mapper_menu_action(column); });
    }
}

void TOLV_TREE_VIEW::custom_context_menu([[maybe_unused]] const QPoint& position)
{
    QMenu menu;
    populate_column_selection_menu(&menu);
    menu.exec(QCursor::pos());
}

void TOLV_TREE_VIEW::perform_signal_mapper_menu_action(int index)
{
    if (index < 0 || index >= header()->count())
        return;
    setColumnHidden(index, !isColumnHidden(index));
    if (!isColumnHidden(index))
        resizeColumnToContents(index);
    emit column_visibility_changed(index);
}

void TOLV_TREE_VIEW::header_enter()
{
    emit header_mouse_enter();
}
