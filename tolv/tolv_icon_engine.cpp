#include "tolv_icon_engine.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

void TOLV_ICON_ENGINE::paint(QPainter* /*painter*/, const QRect& /*rect*/, QIcon::Mode /*mode*/, QIcon::State /*state*/)
{
}

QIconEngine* TOLV_ICON_ENGINE::clone() const
{
    return nullptr;
}
