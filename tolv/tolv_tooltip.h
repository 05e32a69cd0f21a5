#pragma once

#include "tolv_export.h"

#include <QBasicTimer>
#include <QLabel>

/// A label that looks like the platform's tool tip and stands under its owner's control: it is closed, waits for its
/// delay to pass, or is shown for its time. A change of focus or of the active window, the pointer leaving a widget and
/// the wheel, anywhere in the application, close it. It takes nothing from the events that it watches.
class TOLV_EXPORT TOLV_TOOLTIP : public QLabel
{
    Q_OBJECT

public:
    /// Closed, and a watcher of the whole application for as long as it lives.
    explicit TOLV_TOOLTIP(QWidget* parent = nullptr);
    ~TOLV_TOOLTIP() override;

    /// Closes what is shown and shows the text at the pointer when the delay has passed. A text that is shown or waits
    /// already changes nothing, the delay included, so that a move among items of one text does not flicker.
    void show_tooltip(const QString& text);
    /// Lets the tip go in its own time, beginning now, not at once.
    void hide_tooltip();
    /// Closes the tip and forgets its text.
    void hide_immediately();
    /// Shows the text, unless it is empty, at the pointer.
    void show_immediately();
    /// The time for which the tip is shown begins anew.
    void restart_display_timer();
    /// Moves the tip to a point of the screen; one that would stand out to the right is moved left by its width and 4
    /// pixels, one that would stand out below is moved up by its height and 24 pixels. Internal error "qApp != nullptr"
    /// without an application.
    void place_tooltip(const QPoint& pos);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    /// Runs while the tip is shown.
    QBasicTimer m_display_timer;
    /// Runs while the tip waits.
    QBasicTimer m_delay_timer;
    /// How long the tip is shown, in milliseconds; -1 for as long as nothing closes it.
    int m_display_time = 5000;
    /// How long the tip waits, in milliseconds; -1 for a tip that show_tooltip() never shows.
    int m_delay = 1000;

private:
    void fit_to_text();
};
