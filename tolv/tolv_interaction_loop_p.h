#pragma once

#include <QEventLoop>
#include <QPointer>
#include <QVector>
#include <QWidget>

/// The nested event loop of one mouse interaction: a rectangle track, a gesture, a zoom drag, the magnifying glass. The
/// interaction is an event filter on a widget and ends the loop by exit().
///
/// The loop also ends when the widget goes away in the middle: hidden, by itself or with its window, or deleted; and when
/// a modal dialog cuts its window off from the mouse, as the release would never come. It sees this before the filter
/// does, so that a filter that consumes all events cannot hold it up. From then on, as after exit(), isRunning() is false
/// although run() may not have returned yet, and the filter has to let events pass.
///
/// A deleteLater() of the widget, or of what it stands in, is put off until the callers of run() have returned to their
/// own event loop: Qt and the scroll area are still at work on the press that began the interaction.
class TOLV_INTERACTION_LOOP : public QEventLoop
{
    Q_OBJECT

public:
    /// Neither is owned, and both may be deleted while the loop runs.
    TOLV_INTERACTION_LOOP(QWidget* widget, QObject* filter);

    /// Installs the filter, runs until the end and removes the filter. True where the interaction ended the loop, false
    /// where the widget went away, is about to, or was cut off. A widget that is not visible is away from the beginning.
    bool run();

protected:
    /// Sees the events of all objects before anybody else does.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool contains_widget(const QObject* object) const;

    QPointer<QWidget> m_widget;
    QPointer<QObject> m_filter;
    QVector<QPointer<QObject>> m_to_delete; ///< when the loop is over
    bool m_is_broken = false;
};
