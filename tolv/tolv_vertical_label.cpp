#include "tolv_vertical_label.h"

#include "tolv_mem.h"

#include <QPainter>
#include <QStyle>

TOLV_MEM_INITIALIZER();

TOLV_VERTICAL_LABEL::TOLV_VERTICAL_LABEL(QWidget* parent) : QLabel(parent)
{
}

TOLV_VERTICAL_LABEL::~TOLV_VERTICAL_LABEL() = default;

QSize TOLV_VERTICAL_LABEL::sizeHint() const
{
    return QLabel::sizeHint().transposed();
}

QSize TOLV_VERTICAL_LABEL::minimumSizeHint() const
{
    return QLabel::minimumSizeHint().transposed();
}

void TOLV_VERTICAL_LABEL::paintEvent(QPaintEvent*)
{
    QRect r = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    r.setSize(r.size().transposed());
    const QString visible_text = fontMetrics().elidedText(text(), Qt::ElideRight, r.width());

    QPainter painter(this);
    painter.translate(r.left(), r.right() - r.left() + r.top() + 1);
    painter.rotate(-90);
    painter.translate(-r.left(), -r.top());
    style()->drawItemText(&painter, r, static_cast<int>(alignment()), palette(), isEnabled(), visible_text,
                          foregroundRole());
}
