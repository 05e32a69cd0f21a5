#pragma once

#include "tolv_dialog.h"
#include "tolv_export.h"

#include <QString>

#include <memory>

class QComboBox;

namespace Ui
{
class TOLV_SET_ZOOM_DLG_UI;
}

/// The dialog that asks for a magnification: a list of percentages, each twice the one before, and "Fit in Window". Any
/// other percentage can be typed, with or without the sign; at most six digits and one decimal.
///
/// It has no effect by itself. After it has been accepted, ask get_current_text() for "Fit in Window" first, then
/// get_selected_zoom().
class TOLV_EXPORT TOLV_SET_ZOOM_DLG : public TOLV_DIALOG
{
    Q_OBJECT

public:
    /// The limits, in percent, say how far the list goes; 100 percent is always in it.
    TOLV_SET_ZOOM_DLG(float min_percent, float max_percent, QWidget* parent = nullptr,
                      Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_SET_ZOOM_DLG() override;

    /// The text in the box.
    QString get_current_text() const;
    /// The percentage in the box, within the limits; 100 where the text is no number.
    float get_selected_zoom() const;
    /// The box itself, for an item that is not in the list.
    QComboBox* get_combo_box() const;

    /// A percentage as the list shows it: "12.5%".
    static QString get_percent_text(float percent);

protected:
    /// The text in the box is selected, so that what is typed takes its place.
    void showEvent(QShowEvent* event) override;

private:
    void fill_combo_box();

    const std::unique_ptr<Ui::TOLV_SET_ZOOM_DLG_UI> m_ui;
    const float m_min_percent;
    const float m_max_percent;
};
