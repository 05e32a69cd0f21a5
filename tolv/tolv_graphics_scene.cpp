#include "tolv_graphics_scene.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

TOLV_GRAPHICS_SCENE::TOLV_GRAPHICS_SCENE(QObject* parent) : QGraphicsScene(parent)
{
}

TOLV_GRAPHICS_SCENE::~TOLV_GRAPHICS_SCENE() = default;
