#pragma once

#include "gui_driver.h"
#include "gui_test.h"
#include "workbench_window.h"

#include <memory>

/// Tests that drive the workbench's window, which goes before its application does.
class WORKBENCH_TEST : public TOLV_GUI_TEST
{
protected:
    void TearDown() override
    {
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// A new window, not shown yet, in the place of the one before.
    void make_window()
    {
        m_window = std::make_unique<WORKBENCH_WINDOW>();
        app().set_main_window(m_window.get());
    }

    void make_and_show_window()
    {
        make_window();
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    }

    std::unique_ptr<WORKBENCH_WINDOW> m_window;
};
