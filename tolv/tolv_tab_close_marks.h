#pragma once

#include "tolv_export.h"

#include <QObject>

class QAbstractButton;
class QTabBar;

/// Paints the buttons that close the tabs of a tab bar in the colour of the tabs' text. The style's own picture is dark,
/// whatever the ground is, and blurred on dense screens. The mark of the current tab and the one under the mouse stand
/// out. What a host puts on a tab with QTabBar::setTabButton() is left alone.
class TOLV_EXPORT TOLV_TAB_CLOSE_MARKS : public QObject
{
    Q_OBJECT

public:
    /// Takes care of the buttons that a tab bar has and will have, as long as it lives. A second call changes nothing,
    /// and neither does null.
    static void install(QTabBar* bar);
    ~TOLV_TAB_CLOSE_MARKS() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit TOLV_TAB_CLOSE_MARKS(QTabBar* bar);
    void watch(QObject* child);
    void paint(QAbstractButton* button) const;
    bool is_on_current_tab(const QAbstractButton* button) const;

    QTabBar* m_bar; ///< the parent
};
