#pragma once

#include "tolv_dialog.h"
#include "tolv_export.h"

class QSpinBox;
class QWidget;

/// The dialog that asks how many pages a printed drawing is to span, 1 to 20 in each direction.
class TOLV_EXPORT TOLV_MULTIPAGE_SETUP_DLG : public TOLV_DIALOG
{
    Q_OBJECT

public:
    /// With these numbers of pages at first; what is out of range becomes the nearest that is in it.
    TOLV_MULTIPAGE_SETUP_DLG(int pages_wide, int pages_tall, QWidget* parent = nullptr,
                             Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_MULTIPAGE_SETUP_DLG() override;

    /// The numbers of pages in the boxes.
    int get_pages_wide() const;
    int get_pages_tall() const;

public slots:
    /// Runs the dialog; QDialog::Accepted or QDialog::Rejected.
    int exec() override;

private:
    QWidget* create_pages_group();

    QSpinBox* m_pages_wide; ///< a child, as is the next one
    QSpinBox* m_pages_tall;
};
