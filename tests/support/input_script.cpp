#include "input_script.h"

#include "gui_driver.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QSignalBlocker>
#include <QThread>
#include <QTimer>

#include <deque>
#include <vector>

namespace
{
struct STEP
{
    std::function<void()> action;
    std::function<bool()> condition; // instead of an action
};

int get_loop_level()
{
    return QThread::currentThread()->loopLevel();
}

/// An exit of all loops also stops later ones from beginning, until the application's own loop has run once.
void allow_loops_again()
{
    const QSignalBlocker blocker(qApp); // it is not about to quit
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
}
} // namespace

struct INPUT_SCRIPT::IMPL : public QObject
{
    int timeout = 0;
    TEST_PLACE place;
    std::deque<STEP> steps;
    std::vector<int> running; // the loop level at which each step under way began
    QTimer watchdog;
    int base_level = 0;
    int done = 0;
    bool started = false;
    bool armed = false;
    bool failed = false;
    bool exited = false;

    bool is_through() const
    {
        return steps.empty() && running.empty();
    }

    void arm(int milliseconds)
    {
        armed = true;
        // A timer of its own for each step: a timer does not fire again inside its own slot.
        auto* const timer = new QTimer(this);
        timer->setSingleShot(true);
        QObject::connect(timer, &QTimer::timeout, this,
                         [this, timer]
                         {
                             timer->deleteLater();
                             run_next();
                         });
        timer->start(milliseconds);
    }

    void run_next()
    {
        armed = false;
        if (steps.empty())
            return;
        const bool is_step_under_way = !running.empty() && get_loop_level() <= running.back();
        if (is_step_under_way || (steps.front().condition && !steps.front().condition()))
        {
            arm(1);
            return;
        }
        const STEP step = std::move(steps.front());
        steps.pop_front();
        ++done;
        arm(0);
        if (!step.action)
            return;
        running.push_back(get_loop_level());
        step.action();
        running.pop_back();
    }

    void add(STEP step)
    {
        steps.push_back(std::move(step));
        if (started && !armed)
            arm(0);
    }

    void give_up()
    {
        if (is_through() && get_loop_level() <= base_level)
            return;
        if (!failed)
            ADD_FAILURE_AT(place.file, place.line) << "the script did not come to its end: " << done << " steps began, "
                                                   << steps.size() << " were waiting after " << timeout << " ms";
        failed = true;
        steps.clear();
        if (end_window())
            watchdog.start(100);
        else if (get_loop_level() > base_level)
        {
            exited = true;
            QCoreApplication::exit(1);
            watchdog.start(100); // for a loop around the one that was just ended
        }
    }

    /// Closes one popup or modal dialog; false where there is none.
    static bool end_window()
    {
        QWidget* const popup = QApplication::activePopupWidget();
        QWidget* const modal = QApplication::activeModalWidget();
        if (popup != nullptr)
            popup->close();
        else if (auto* const dialog = qobject_cast<QDialog*>(modal))
            dialog->reject();
        else if (modal != nullptr)
            modal->close();
        return (popup != nullptr && !popup->isVisible()) || (modal != nullptr && !modal->isVisible());
    }
};

INPUT_SCRIPT::INPUT_SCRIPT(int timeout_milliseconds, TEST_PLACE place) : m_impl(std::make_unique<IMPL>())
{
    m_impl->timeout = timeout_milliseconds;
    m_impl->place = place;
    m_impl->watchdog.setSingleShot(true);
    QObject::connect(&m_impl->watchdog, &QTimer::timeout, m_impl.get(), [impl = m_impl.get()] { impl->give_up(); });
}

INPUT_SCRIPT::~INPUT_SCRIPT()
{
    if (m_impl->started)
        finish();
    else if (!m_impl->steps.empty())
        ADD_FAILURE_AT(m_impl->place.file, m_impl->place.line) << "the script was never started";
}

INPUT_SCRIPT& INPUT_SCRIPT::then(std::function<void()> step)
{
    m_impl->add({std::move(step), {}});
    return *this;
}

INPUT_SCRIPT& INPUT_SCRIPT::wait_until(std::function<bool()> condition)
{
    m_impl->add({{}, std::move(condition)});
    return *this;
}

void INPUT_SCRIPT::start()
{
    m_impl->started = true;
    m_impl->base_level = get_loop_level();
    m_impl->watchdog.start(m_impl->timeout);
    m_impl->arm(0);
}

bool INPUT_SCRIPT::finish()
{
    if (!m_impl->started)
        start();
    QTimer tick;
    tick.start(2);
    while (!m_impl->is_through())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    m_impl->watchdog.stop();
    m_impl->started = false;
    if (m_impl->exited && get_loop_level() == 0)
        allow_loops_again();
    m_impl->exited = false;
    return !m_impl->failed;
}

bool INPUT_SCRIPT::run()
{
    start();
    return finish();
}
