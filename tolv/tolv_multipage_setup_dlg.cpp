#include "tolv_multipage_setup_dlg.h"

#include "tolv_global.h"
#include "tolv_mem.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int MOST_PAGES = 20;

QSpinBox* create_page_box(int pages, const QString& name, QWidget* parent)
{
    auto* const box = new QSpinBox(parent);
    box->setObjectName(name);
    box->setRange(1, MOST_PAGES);
    box->setValue(pages);
    return box;
}
} // namespace

TOLV_MULTIPAGE_SETUP_DLG::TOLV_MULTIPAGE_SETUP_DLG(int pages_wide, int pages_tall, QWidget* parent,
                                                   Qt::WindowFlags flags)
    : TOLV_DIALOG(parent, flags), m_pages_wide(create_page_box(pages_wide, QStringLiteral("m_pages_wide"), this)),
      m_pages_tall(create_page_box(pages_tall, QStringLiteral("m_pages_tall"), this))
{
    setWindowTitle(QStringLiteral("Multipage Setup"));
    auto* const text = new QLabel(
        QStringLiteral("Specify the number of pages you want to fit this Block Design File for printing."), this);
    text->setWordWrap(true);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Horizontal, this);
    TOLV_SAFE_CONNECT(buttons, SIGNAL(accepted()), this, SLOT(accept()));
    TOLV_SAFE_CONNECT(buttons, SIGNAL(rejected()), this, SLOT(reject()));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(create_pages_group());
    layout->addWidget(buttons);
    m_pages_wide->selectAll(); // so that what is typed takes its place
}

TOLV_MULTIPAGE_SETUP_DLG::~TOLV_MULTIPAGE_SETUP_DLG() = default;

QWidget* TOLV_MULTIPAGE_SETUP_DLG::create_pages_group()
{
    auto* const group = new QGroupBox(this);
    auto* const layout = new QGridLayout(group);
    layout->addWidget(new QLabel(QStringLiteral("Fit to:"), group), 0, 0);
    layout->addWidget(m_pages_wide, 0, 1);
    layout->addWidget(new QLabel(QStringLiteral("pages wide by"), group), 0, 2);
    layout->addWidget(m_pages_tall, 0, 3);
    layout->addWidget(new QLabel(QStringLiteral("pages tall"), group), 0, 4);
    return group;
}

int TOLV_MULTIPAGE_SETUP_DLG::get_pages_wide() const
{
    return m_pages_wide->value();
}

int TOLV_MULTIPAGE_SETUP_DLG::get_pages_tall() const
{
    return m_pages_tall->value();
}

int TOLV_MULTIPAGE_SETUP_DLG::exec()
{
    return QDialog::exec();
}
