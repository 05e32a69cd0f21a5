#include "tolv_clickable_label.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

TOLV_CLICKABLE_LABEL::TOLV_CLICKABLE_LABEL(QWidget* parent, Qt::WindowFlags flags) : QLabel(parent, flags)
{
}

TOLV_CLICKABLE_LABEL::~TOLV_CLICKABLE_LABEL() = default;

void TOLV_CLICKABLE_LABEL::mousePressEvent(QMouseEvent*)
{
    emit pressed();
}
