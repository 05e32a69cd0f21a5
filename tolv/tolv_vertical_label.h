#pragma once

#include "tolv_export.h"

#include <QLabel>

/// A label whose text runs from bottom to top, as in the title bar of a dock window that stands on its side. It shows
/// one line of plain text, "&" as it stands, with an ellipsis where it does not fit; margin, alignment, colours and font
/// are those of a QLabel, and the alignment is meant as one sees it with the head turned to the left.
class TOLV_EXPORT TOLV_VERTICAL_LABEL : public QLabel
{
    Q_OBJECT

public:
    explicit TOLV_VERTICAL_LABEL(QWidget* parent = nullptr);
    ~TOLV_VERTICAL_LABEL() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
