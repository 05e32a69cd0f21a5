#pragma once

#include "gui_driver.h"
#include "gui_test.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_dock_widget_titlebar.h"
#include "tolv_main_window.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>

#include <memory>

/// What the tests of dock windows share.

/// A dock window that shows its members.
class TEST_DOCK : public TOLV_DOCK_WIDGET
{
public:
    using TOLV_DOCK_WIDGET::TOLV_DOCK_WIDGET;

    using TOLV_DOCK_WIDGET::m_area;
    using TOLV_DOCK_WIDGET::m_button;
    using TOLV_DOCK_WIDGET::m_delay_timer;
    using TOLV_DOCK_WIDGET::m_is_pinned;
    using TOLV_DOCK_WIDGET::m_main_window;
    using TOLV_DOCK_WIDGET::m_saved_max_size;
    using TOLV_DOCK_WIDGET::m_saved_min_size;
    using TOLV_DOCK_WIDGET::m_show_close_button;
    using TOLV_DOCK_WIDGET::m_show_detach_button;
    using TOLV_DOCK_WIDGET::m_show_pushpin_button;
    using TOLV_DOCK_WIDGET::m_state;
    using TOLV_DOCK_WIDGET::m_titlebar;

    /// A button of the title bar by its object name ("m_pin_button", "m_pin_button_v").
    QToolButton* get_titlebar_button(const QString& name) const
    {
        return m_titlebar->findChild<QToolButton*>(name);
    }
    /// The title of the form that is in force.
    QLabel* get_title_label() const
    {
        const bool stands = features().testFlag(DockWidgetVerticalTitleBar);
        return m_titlebar->findChild<QLabel*>(stands ? "m_title_v" : "m_title");
    }
    /// The button of a kind ("pin", "close", "detach") in the form that is in force.
    QToolButton* get_button_in_force(const QString& kind) const
    {
        const bool stands = features().testFlag(DockWidgetVerticalTitleBar);
        return get_titlebar_button("m_" + kind + "_button" + (stands ? "_v" : ""));
    }
    /// Whether both buttons of a kind are hidden, shown, or not alike (-1).
    int get_shown(const QString& kind) const
    {
        const bool first = !get_titlebar_button("m_" + kind + "_button")->isHidden();
        const bool second = !get_titlebar_button("m_" + kind + "_button_v")->isHidden();
        return first == second ? int(first) : -1;
    }
    /// The same of the check marks of the pins, which the title bar's flag must agree with.
    int get_pin_checked() const
    {
        const bool first = get_titlebar_button("m_pin_button")->isChecked();
        const bool second = get_titlebar_button("m_pin_button_v")->isChecked();
        return first == second && first == m_titlebar->get_pinned() ? int(first) : -1;
    }
};

/// A window with a document in the middle and what dock windows a test adds.
class TOLV_DOCK_FIXTURE : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<TOLV_MAIN_WINDOW>();
        m_window->setAnimated(false); // what a drag brings about is there when it is over
        m_window->setGeometry(40, 40, 700, 500);
        auto* const document = new QLabel("document");
        document->setObjectName("document");
        document->setAlignment(Qt::AlignCenter);
        m_window->setCentralWidget(document);
    }
    void TearDown() override
    {
        // What the pointer happens to rest on.
        QToolTip::hideText();
        GUI_DRIVER::wait_for([] { return !QToolTip::isVisible(); });
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    TEST_DOCK* add_dock(const QString& title, Qt::DockWidgetArea area)
    {
        auto* const dock = new TEST_DOCK(title, m_window.get());
        dock->setObjectName(title);
        auto* const content = new QLabel("content of " + title);
        content->setMinimumSize(120, 80);
        dock->setWidget(content);
        m_window->addDockWidget(area, dock);
        return dock;
    }
    TOLV_DOCK_WIDGET_BUTTON_BAR* get_bar(Qt::ToolBarArea area) const
    {
        return m_window->m_button_bars.value(area);
    }
    /// Whether the side button of a window is on the bar of an edge, and on no other.
    bool is_on_bar(const TEST_DOCK* dock, Qt::ToolBarArea area) const
    {
        for (auto bar = m_window->m_button_bars.begin(); bar != m_window->m_button_bars.end(); ++bar)
        {
            if (bar.value()->m_buttons.contains(dock->m_button) != (bar.key() == area))
                return false;
        }
        return true;
    }
    bool is_on_no_bar(const TEST_DOCK* dock) const
    {
        return is_on_bar(dock, Qt::NoToolBarArea);
    }
    /// Turns the pin, and has the side button laid out.
    static void unpin(TEST_DOCK* dock)
    {
        dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
        GUI_DRIVER::process_posted();
    }
    /// Clicks a button of the title bar when it has come to rest: a window manager may still be placing the window, and
    /// the title bar takes its form with its first painting.
    static void click_titlebar(const TEST_DOCK* dock, const QString& kind)
    {
        constexpr int ENOUGH = 5;
        QRect place;
        int count = 0;
        GUI_DRIVER::wait_for(
            [&]
            {
                const QToolButton* const button = dock->get_button_in_force(kind);
                const QRect new_place(button->mapToGlobal(QPoint(0, 0)), button->size());
                count = button->isVisible() && new_place == place ? count + 1 : 0;
                place = new_place;
                return count >= ENOUGH;
            });
        GUI_DRIVER::click(dock->get_button_in_force(kind));
    }
    bool show()
    {
        return GUI_DRIVER::show(m_window.get());
    }

    std::unique_ptr<TOLV_MAIN_WINDOW> m_window;
};
