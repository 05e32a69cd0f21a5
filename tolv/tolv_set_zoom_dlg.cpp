#include "tolv_set_zoom_dlg.h"

#include "tolv_mem.h"
#include "ui_tolv_set_zoom_dlg.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

#include <algorithm>
#include <cmath>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr float DEFAULT_PERCENT = 100.0F;
} // namespace

TOLV_SET_ZOOM_DLG::TOLV_SET_ZOOM_DLG(float min_percent, float max_percent, QWidget* parent, Qt::WindowFlags flags)
    : TOLV_DIALOG(parent, flags), m_ui(std::make_unique<Ui::TOLV_SET_ZOOM_DLG_UI>()), m_min_percent(min_percent),
      m_max_percent(max_percent)
{
    m_ui->setupUi(this);
    fill_combo_box();
    m_ui->comboBox->setCompleter(nullptr); // which would make 50 percent of a 5
    m_ui->comboBox->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("^[0-9]\\d{0,5}(\\.\\d{1})?%?$")), m_ui->comboBox));
}

TOLV_SET_ZOOM_DLG::~TOLV_SET_ZOOM_DLG() = default;

void TOLV_SET_ZOOM_DLG::fill_combo_box()
{
    QStringList percentages{get_percent_text(DEFAULT_PERCENT)};
    for (float percent = DEFAULT_PERCENT / 2; percent >= m_min_percent && percent > 0; percent /= 2)
        percentages.prepend(get_percent_text(percent));
    for (float percent = DEFAULT_PERCENT * 2; m_max_percent >= percent && std::isfinite(percent); percent *= 2)
        percentages.append(get_percent_text(percent));
    m_ui->comboBox->addItems(percentages);
    m_ui->comboBox->addItem(QStringLiteral("Fit in Window"), QVariant());
}

QString TOLV_SET_ZOOM_DLG::get_current_text() const
{
    return m_ui->comboBox->currentText();
}

float TOLV_SET_ZOOM_DLG::get_selected_zoom() const
{
    bool is_number = false;
    const float percent = get_current_text().remove(QRegularExpression(QStringLiteral("\\%"))).toFloat(&is_number);
    return is_number ? std::max(m_min_percent, std::min(m_max_percent, percent)) : DEFAULT_PERCENT;
}

QComboBox* TOLV_SET_ZOOM_DLG::get_combo_box() const
{
    return m_ui->comboBox;
}

QString TOLV_SET_ZOOM_DLG::get_percent_text(float percent)
{
    return QString::number(double(percent), 'f', 1) + QLatin1Char('%');
}

void TOLV_SET_ZOOM_DLG::showEvent(QShowEvent* event)
{
    TOLV_DIALOG::showEvent(event);
    m_ui->comboBox->lineEdit()->selectAll();
}
