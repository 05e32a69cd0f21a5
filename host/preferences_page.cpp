#include "preferences_page.h"

#include "preferences_editors.h"
#include "preferences_model.h"
#include "preferences_preview.h"
#include "preferences_session.h"
#include "tolv_global.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

PREFERENCES_PAGE::PREFERENCES_PAGE(PREFERENCES_SESSION& session, PREFERENCES_TABLE& table, PREFERENCES_EDITOR* editor,
                                   const TEXTS& texts, QWidget* parent)
    : QWidget(parent), m_session(session), m_table(table), m_model(new PREFERENCES_MODEL(session, table, this)),
      m_filter(new PREFERENCES_FILTER(this)), m_editor(editor)
{
    auto* const splitter = new QSplitter(this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(create_list(texts));
    splitter->addWidget(create_details(session, texts));
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    const int list_width = m_view->header()->length() + fontMetrics().averageCharWidth() * 4; // with a scroll bar
    splitter->setSizes({list_width, fontMetrics().averageCharWidth() * 140 - list_width});
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    TOLV_SAFE_CONNECT(m_search, SIGNAL(textChanged(QString)), this, SLOT(show_matches(QString)));
    TOLV_SAFE_CONNECT(m_view->selectionModel(), SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), this,
                      SLOT(show_current()));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(activated(QModelIndex)), this, SLOT(begin_change(QModelIndex)));
    TOLV_SAFE_CONNECT(m_preview->get_canvas(), SIGNAL(chosen(int)), this, SLOT(take_sample(int)));
    select_first();
}

bool PREFERENCES_PAGE::select_resource(int resource)
{
    const QModelIndex index = m_filter->mapFromSource(m_model->find_resource(resource));
    if (!index.isValid())
        return false;
    m_view->setCurrentIndex(index);
    m_view->scrollTo(index);
    return true;
}

bool PREFERENCES_PAGE::select_name(const QString& name)
{
    const QVector<PREFERENCES_TABLE::ROW>& rows = m_table.get_rows();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&name](const PREFERENCES_TABLE::ROW& each) { return each.name == name; });
    return row != rows.end() && select_resource(row->resource);
}

int PREFERENCES_PAGE::get_resource() const
{
    return m_view->currentIndex().data(PREFERENCES_MODEL::ROLE_RESOURCE).toInt();
}

QLineEdit* PREFERENCES_PAGE::get_search() const
{
    return m_search;
}

void PREFERENCES_PAGE::show_matches(const QString& text)
{
    const int resource = get_resource();
    m_filter->set_search(text);
    const bool has_rows = m_filter->rowCount() > 0;
    m_view->setVisible(has_rows);
    m_none->setVisible(!has_rows);
    if (!text.trimmed().isEmpty())
        m_view->expandAll();
    if (resource == 0 || !select_resource(resource))
        select_first();
}

void PREFERENCES_PAGE::show_current()
{
    const int resource = get_resource();
    const QString group = get_group();
    const PREFERENCES_TABLE::ROW* const row = m_table.find_row(resource);
    m_title->setText(row == nullptr ? group : tr("%1: %2").arg(group, row->title));
    m_preview->set_current(group, resource);
    m_editor->set_resource(resource);
}

void PREFERENCES_PAGE::take_sample(int resource)
{
    if (!select_resource(resource))
    {
        m_search->clear(); // the search hides it
        select_resource(resource);
    }
}

void PREFERENCES_PAGE::begin_change(const QModelIndex& index)
{
    if (index.data(PREFERENCES_MODEL::ROLE_RESOURCE).toInt() != 0)
        m_editor->begin_change();
}

void PREFERENCES_PAGE::enable_resets()
{
    const auto is_changed = [this](int resource) { return m_table.is_changed(resource); };
    const QSet<int> group = m_model->get_resources(get_group());
    const QSet<int> all = m_model->get_resources();
    m_reset_row->setEnabled(get_resource() != 0 && is_changed(get_resource()));
    m_reset_group->setEnabled(std::any_of(group.begin(), group.end(), is_changed));
    m_reset_all->setEnabled(std::any_of(all.begin(), all.end(), is_changed));
}

void PREFERENCES_PAGE::reset_row()
{
    m_session.reset(m_table, {get_resource()});
}

void PREFERENCES_PAGE::reset_group()
{
    m_session.reset(m_table, m_model->get_resources(get_group()));
}

void PREFERENCES_PAGE::reset_all()
{
    m_session.reset(m_table, m_model->get_resources());
}

QWidget* PREFERENCES_PAGE::create_list(const TEXTS& texts)
{
    auto* const list = new QWidget(this);
    list->setMinimumWidth(fontMetrics().averageCharWidth() * 38);
    m_search = new QLineEdit(list);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setAccessibleName(tr("Search"));
    m_search->setPlaceholderText(tr("Words of a name"));
    m_search->setClearButtonEnabled(true);
    auto* const label = new QLabel(tr("S&earch:"), list);
    label->setBuddy(m_search);
    m_view = new QTreeView(list);
    m_view->setObjectName(QStringLiteral("rows"));
    m_view->setAccessibleName(texts.list);
    m_filter->setSourceModel(m_model);
    m_view->setModel(m_filter);
    m_view->setUniformRowHeights(true);
    m_view->setAllColumnsShowFocus(true);
    const int line = fontMetrics().height();
    m_view->setIconSize(QSize(line * 2, line - 4));
    m_model->set_sample_size(m_view->iconSize());
    size_columns();
    m_none = new QLabel(tr("Nothing has such a name."), list);
    m_none->setObjectName(QStringLiteral("nothing_found"));
    m_none->setAlignment(Qt::AlignCenter);
    m_none->hide();
    auto* const search_row = new QHBoxLayout;
    search_row->addWidget(label);
    search_row->addWidget(m_search);
    auto* const layout = new QVBoxLayout(list);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(search_row);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_none, 1);
    return list;
}

QWidget* PREFERENCES_PAGE::create_details(PREFERENCES_SESSION& session, const TEXTS& texts)
{
    auto* const details = new QWidget(this);
    m_title = new QLabel(details);
    m_title->setObjectName(QStringLiteral("row_title"));
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_preview = new PREFERENCES_PREVIEW(session, m_table, details);
    m_preview->setObjectName(QStringLiteral("preview"));
    m_editor->setParent(details); // before the button in the order of the Tab key
    auto* const button = new QPushButton(tr("&Reset"), details);
    button->setObjectName(QStringLiteral("reset_button"));
    button->setAutoDefault(false);
    button->setToolTip(tr("Brings built-in values back"));
    create_resets(button, texts);
    auto* const editor_row = new QHBoxLayout;
    editor_row->addWidget(m_editor, 1);
    editor_row->addWidget(button, 0, Qt::AlignBottom);
    auto* const layout = new QVBoxLayout(details);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_preview, 1);
    layout->addWidget(m_title);
    layout->addLayout(editor_row);
    return details;
}

void PREFERENCES_PAGE::create_resets(QPushButton* button, const TEXTS& texts)
{
    auto* const menu = new QMenu(button);
    menu->setObjectName(QStringLiteral("reset_menu"));
    m_reset_row = menu->addAction(texts.reset_row);
    m_reset_group = menu->addAction(tr("This &Group"));
    m_reset_all = menu->addAction(texts.reset_all);
    button->setMenu(menu);
    TOLV_SAFE_CONNECT(menu, SIGNAL(aboutToShow()), this, SLOT(enable_resets()));
    TOLV_SAFE_CONNECT(m_reset_row, SIGNAL(triggered()), this, SLOT(reset_row()));
    TOLV_SAFE_CONNECT(m_reset_group, SIGNAL(triggered()), this, SLOT(reset_group()));
    TOLV_SAFE_CONNECT(m_reset_all, SIGNAL(triggered()), this, SLOT(reset_all()));
}

void PREFERENCES_PAGE::size_columns()
{
    const int character = fontMetrics().averageCharWidth();
    int value = 0;
    for (const PREFERENCES_TABLE::ROW& row : m_table.get_rows())
        value = std::max(value, fontMetrics().horizontalAdvance(m_table.get_value(row.resource)));
    value = std::min(value, character * 32) + m_view->iconSize().width() + character * 3;
    m_view->header()->setStretchLastSection(false);
    m_view->header()->resizeSection(PREFERENCES_MODEL::COLUMN_NAME, character * 34);
    m_view->header()->resizeSection(PREFERENCES_MODEL::COLUMN_VALUE, value);
    m_view->header()->resizeSection(PREFERENCES_MODEL::COLUMN_STATE, character * 14);
    m_view->header()->setSectionResizeMode(PREFERENCES_MODEL::COLUMN_NAME, QHeaderView::Stretch);
}

void PREFERENCES_PAGE::select_first()
{
    const QModelIndex group = m_filter->index(0, 0);
    if (!group.isValid())
    {
        show_current();
        return;
    }
    m_view->expand(group);
    m_view->setCurrentIndex(m_filter->index(0, 0, group));
    m_view->scrollToTop();
}

QString PREFERENCES_PAGE::get_group() const
{
    return m_view->currentIndex().data(PREFERENCES_MODEL::ROLE_GROUP).toString();
}
