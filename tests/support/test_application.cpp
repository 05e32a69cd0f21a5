#include "test_application.h"

#include "message_watch.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

#include <memory>

namespace
{
struct STATE
{
    int argc = 0;
    char** argv = nullptr;
    int qt_argc = 0; // the application keeps a reference to it
    bool was_tolv = false;
    std::unique_ptr<QApplication> app;
    TEST_APP* test_app = nullptr;

    static STATE& get()
    {
        static STATE* const state = new STATE;
        return *state;
    }
};

void start_plain()
{
    STATE& state = STATE::get();
    state.qt_argc = state.argc;
    TEST_APPLICATION::set_test_font();
    state.app = std::make_unique<QApplication>(state.qt_argc, state.argv);
    TEST_APPLICATION::set_test_font();
}

void start_tolv()
{
    STATE& state = STATE::get();
    ASSERT_FALSE(state.was_tolv) << "a process has one TOLV_APP in its life: run this test in a process of its own";
    state.was_tolv = true;
    state.qt_argc = state.argc;
    const char** const arguments = const_cast<const char**>(state.argv);
    char** const copy = TOLV_APP::copy_argv_for_qt(state.argc, arguments); // lives as long as the process
    TEST_APPLICATION::set_test_font();
    auto app = std::make_unique<TEST_APP>(state.qt_argc, copy);
    state.test_app = app.get();
    state.app = std::move(app);
    ASSERT_TRUE(state.test_app->init_instance(state.argc, arguments));
}
} // namespace

TEST_APP::TEST_APP(int& argc, char** argv) : TOLV_APP(argc, argv)
{
    MESSAGE_WATCH::install();
    TEST_APPLICATION::set_test_font();
}

TEST_APP::~TEST_APP() = default;

QWidget* TEST_APP::get_main_window()
{
    return m_main_window;
}

void TEST_APP::set_main_window(QWidget* window)
{
    m_main_window = window;
}

void TEST_APPLICATION::set_arguments(int argc, char** argv)
{
    STATE::get().argc = argc;
    STATE::get().argv = argv;
}

int TEST_APPLICATION::get_argc()
{
    return STATE::get().argc;
}

char** TEST_APPLICATION::get_argv()
{
    return STATE::get().argv;
}

void TEST_APPLICATION::require(KIND kind)
{
    if (get_kind() == kind)
        return;
    finish();
    if (kind == KIND_PLAIN)
        start_plain();
    else if (kind == KIND_TOLV)
        start_tolv();
}

void TEST_APPLICATION::finish()
{
    STATE& state = STATE::get();
    if (state.test_app != nullptr)
        state.test_app->exit_instance();
    state.test_app = nullptr;
    state.app.reset();
}

TEST_APPLICATION::KIND TEST_APPLICATION::get_kind()
{
    const STATE& state = STATE::get();
    if (state.app == nullptr)
        return KIND_NONE;
    return state.test_app != nullptr ? KIND_TOLV : KIND_PLAIN;
}

TEST_APP* TEST_APPLICATION::get_test_app()
{
    return STATE::get().test_app;
}

void TEST_APPLICATION::set_test_font()
{
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
}
