#pragma once

#include "tolv_export.h"

#include <QGraphicsScene>

/// The scene of a TOLV_GRAPHICS_VIEW. It adds nothing to QGraphicsScene: it is the type that a bird's eye view takes.
class TOLV_EXPORT TOLV_GRAPHICS_SCENE : public QGraphicsScene
{
    Q_OBJECT

public:
    explicit TOLV_GRAPHICS_SCENE(QObject* parent = nullptr);
    ~TOLV_GRAPHICS_SCENE() override;
};
