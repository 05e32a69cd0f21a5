#pragma once

#include "gui_driver.h"
#include "gui_test.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_titlebar.h"
#include "tolv_main_window.h"

#include <QTextEdit>
#include <QToolButton>
#include <QToolTip>

#include <memory>

/// A shown main window with one dock window at its left, and the title bar of that.
class TOLV_DOCK_TITLEBAR_FIXTURE : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<TOLV_MAIN_WINDOW>();
        m_window->resize(600, 420);
        m_window->setCentralWidget(new QTextEdit);
        m_dock = new TOLV_DOCK_WIDGET(QStringLiteral("Messages"), m_window.get());
        m_dock->setWidget(new QTextEdit);
        m_window->addDockWidget(Qt::LeftDockWidgetArea, m_dock);
        m_bar = m_dock->findChild<TOLV_DOCK_WIDGET_TITLEBAR_WIDGET*>();
        GUI_DRIVER::show(m_window.get());
    }

    void TearDown() override
    {
        hide_tooltip();
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// Qt lets a tool tip stay a moment longer.
    static void hide_tooltip()
    {
        QToolTip::hideText();
        GUI_DRIVER::wait_for([] { return !QToolTip::isVisible(); });
    }

    /// Lets the title bar stand, or lie again.
    void set_vertical(bool vertical)
    {
        QDockWidget::DockWidgetFeatures features = m_dock->features();
        features.setFlag(QDockWidget::DockWidgetVerticalTitleBar, vertical);
        m_dock->setFeatures(features);
        m_dock->repaint();
        GUI_DRIVER::process_posted();
    }

    /// A button by the name of its kind, of the lying or of the standing form.
    QToolButton* get_button(const char* kind, bool vertical) const
    {
        return GUI_DRIVER::find_widget<QToolButton>(
            m_bar, QStringLiteral("m_%1_button%2").arg(QLatin1String(kind), QLatin1String(vertical ? "_v" : "")));
    }

    std::unique_ptr<TOLV_MAIN_WINDOW> m_window;
    TOLV_DOCK_WIDGET* m_dock = nullptr;
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET* m_bar = nullptr;
};
