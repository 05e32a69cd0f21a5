#pragma once

#include "tolv_export.h"

#include <QHeaderView>

/// The horizontal header of every tree view. It tells when the pointer enters it.
class TOLV_EXPORT TOLV_TREE_HEADER_VIEW : public QHeaderView
{
    Q_OBJECT

public:
    explicit TOLV_TREE_HEADER_VIEW(QWidget* parent = nullptr);
    ~TOLV_TREE_HEADER_VIEW() override;

signals:
    /// The pointer has entered the header.
    void mouse_enter();

protected:
    void enterEvent(QEvent* event) override;
};
