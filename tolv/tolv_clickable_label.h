#pragma once

#include "tolv_export.h"

#include <QLabel>

/// A label that says when a mouse button is pressed on it.
class TOLV_EXPORT TOLV_CLICKABLE_LABEL : public QLabel
{
    Q_OBJECT

public:
    explicit TOLV_CLICKABLE_LABEL(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_CLICKABLE_LABEL() override;

signals:
    /// Any mouse button went down. The press ends here; there is no signal for the release.
    void pressed();

protected:
    void mousePressEvent(QMouseEvent* event) override;
};
