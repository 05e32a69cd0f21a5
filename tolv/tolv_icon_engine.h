#pragma once

#include "tolv_export.h"

#include <QIconEngine>

/// An engine that paints nothing: the stand-by of hosts that need an icon which is not null and shows nothing. It cannot
/// be copied: an icon that stands on it must not be changed while another copy of it exists. The library makes none.
class TOLV_EXPORT TOLV_ICON_ENGINE : public QIconEngine
{
public:
    /// Draws nothing.
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    /// Null.
    QIconEngine* clone() const override;
};
