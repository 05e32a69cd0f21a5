#pragma once

#include "tolv_export.h"

#include <QWidget>

#include <memory>

class TOLV_PERF_DEBUG;

/// The viewport that a TOLV_GRAPHICS_VIEW installs: it carries the paint statistics of that view. It has nothing to do
/// with TOLV_VIEW.
class TOLV_EXPORT TOLV_VIEWPORT : public QWidget
{
    Q_OBJECT

public:
    /// Without a parent; QAbstractScrollArea::setViewport() gives it one.
    TOLV_VIEWPORT();
    ~TOLV_VIEWPORT() override;

    /// The counters, which the viewport owns; never null. At first there are none.
    TOLV_PERF_DEBUG* perf_debug() const;

private:
    const std::unique_ptr<TOLV_PERF_DEBUG> m_perf_debug;
};
