#include "preferences_preview.h"

#include "preferences_session.h"
#include "tolv_global.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace
{
constexpr int GAP = 4;         // pixels around samples
constexpr int CHARACTERS = 27; // of a sample, so many fit into its width
} // namespace

// ---- The canvas -----------------------------------------------------------------------------------------------------

PREFERENCES_CANVAS::PREFERENCES_CANVAS(PREFERENCES_SESSION& session, const PREFERENCES_TABLE& table, QWidget* parent)
    : QWidget(parent), m_table(table)
{
    setObjectName(QStringLiteral("canvas"));
    setAccessibleName(tr("Preview"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    TOLV_SAFE_CONNECT(&session, SIGNAL(changed()), this, SLOT(refresh()));
}

PREFERENCES_CANVAS::~PREFERENCES_CANVAS() = default;

void PREFERENCES_CANVAS::set_current(const QString& group, int resource)
{
    m_resource = resource;
    if (m_group != group)
    {
        m_group = group;
        make_samples();
    }
    update();
}

QRect PREFERENCES_CANVAS::get_rect(int resource) const
{
    const auto sample =
        std::find_if(m_samples.begin(), m_samples.end(),
                     [resource](const PREFERENCES_SAMPLE& each) { return each.get_resource() == resource; });
    return sample == m_samples.end() ? QRect() : sample->get_rect();
}

void PREFERENCES_CANVAS::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(rect(), TOLV_COLOR(preferences_get_ground(m_group)).get_color());
    const QColor label = preferences_get_label_color(m_group);
    for (const PREFERENCES_SAMPLE& sample : m_samples)
    {
        sample.paint(painter, label);
        if (sample.get_resource() == m_resource)
            paint_marker(painter, sample.get_rect(), label);
    }
}

void PREFERENCES_CANVAS::resizeEvent(QResizeEvent*)
{
    arrange();
    emit resized();
}

void PREFERENCES_CANVAS::mousePressEvent(QMouseEvent* event)
{
    for (const PREFERENCES_SAMPLE& sample : m_samples)
    {
        if (!sample.get_rect().contains(event->pos()))
            continue;
        const int resource = sample.get_resource(); // the answer may put other samples in place
        emit chosen(resource);
        return;
    }
}

void PREFERENCES_CANVAS::refresh()
{
    make_samples(); // a line may have got another colour, a font another height
    update();
}

void PREFERENCES_CANVAS::make_samples()
{
    m_samples.clear();
    for (const PREFERENCES_TABLE::ROW& row : m_table.get_rows())
    {
        if (row.group == m_group)
            m_samples.push_back(m_table.make_sample(row));
    }
    arrange();
}

void PREFERENCES_CANVAS::arrange()
{
    const int wish = fontMetrics().averageCharWidth() * CHARACTERS + GAP;
    const bool is_wide = !m_samples.empty() && m_samples.front().is_wide();
    const auto columns = static_cast<std::size_t>(is_wide ? 1 : std::max(1, (width() - GAP) / wish));
    int top = GAP;
    for (std::size_t first = 0; first < m_samples.size(); first += columns)
    {
        const std::size_t count = std::min(columns, m_samples.size() - first);
        int height = 0;
        for (std::size_t i = first; i < first + count; ++i)
            height = std::max(height, m_samples[i].get_height(font()));
        const int sample_width = (width() - GAP) / static_cast<int>(columns) - GAP;
        for (std::size_t i = first; i < first + count; ++i)
        {
            const int left = GAP + static_cast<int>(i - first) * (sample_width + GAP);
            m_samples[i].set_rect(QRect(left, top, sample_width, height));
        }
        top += height + GAP;
    }
    setMinimumHeight(top);
}

void PREFERENCES_CANVAS::paint_marker(QPainter& painter, const QRect& rect, const QColor& color) const
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 2));
    painter.drawRect(rect.adjusted(-1, -1, 1, 1));
}

// ---- The frame around it --------------------------------------------------------------------------------------------

PREFERENCES_PREVIEW::PREFERENCES_PREVIEW(PREFERENCES_SESSION& session, const PREFERENCES_TABLE& table, QWidget* parent)
    : QScrollArea(parent), m_canvas(new PREFERENCES_CANVAS(session, table))
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidget(m_canvas);
    // Only when the scroll bars know the new size.
    TOLV_SAFE_CONNECT_TYPE(m_canvas, SIGNAL(resized()), this, SLOT(scroll_to_current()), Qt::QueuedConnection);
}

void PREFERENCES_PREVIEW::set_current(const QString& group, int resource)
{
    m_resource = resource;
    m_canvas->set_current(group, resource);
    scroll_to_current();
}

PREFERENCES_CANVAS* PREFERENCES_PREVIEW::get_canvas() const
{
    return m_canvas;
}

void PREFERENCES_PREVIEW::scroll_to_current()
{
    const QRect rect = m_canvas->get_rect(m_resource);
    if (!rect.isEmpty())
        ensureVisible(rect.center().x(), rect.center().y(), 0, rect.height());
}
