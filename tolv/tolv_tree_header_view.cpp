#include "tolv_tree_header_view.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

TOLV_TREE_HEADER_VIEW::TOLV_TREE_HEADER_VIEW(QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
{
}

TOLV_TREE_HEADER_VIEW::~TOLV_TREE_HEADER_VIEW() = default;

void TOLV_TREE_HEADER_VIEW::enterEvent([[maybe_unused]] QEvent* event)
{
    emit mouse_enter();
}
