#pragma once

#include "test_place.h"

#include <functional>
#include <memory>

/// Steps of input that run while a nested event loop runs: for code that returns only when an interaction is over.
///
///     INPUT_SCRIPT script;
///     script.then([&] { GUI_DRIVER::press(view, QPoint(10, 10)); });
///     script.then([&] { GUI_DRIVER::release(view, QPoint(90, 40)); });
///     script.start();
///     const QRect result = track_rectangle(view); // runs its own loop
///     script.finish();
///
/// A step runs from a timer when the one before has returned, or has itself got stuck in a nested loop (a press whose
/// handler runs one, an exec()). What a step does with GUI_DRIVER counts as part of the step. A script that is not
/// through within its time fails the test, and the loops in which it hangs are ended: popups and modal dialogs are
/// closed, then all loops are told to exit.
class INPUT_SCRIPT
{
public:
    explicit INPUT_SCRIPT(int timeout_milliseconds = 10000, TEST_PLACE place = TEST_PLACE::here());
    /// A script that was begun and not finished is finished here; one with steps that was never begun fails the test.
    ~INPUT_SCRIPT();
    INPUT_SCRIPT(const INPUT_SCRIPT&) = delete;
    INPUT_SCRIPT& operator=(const INPUT_SCRIPT&) = delete;

    /// Adds a step; also while the script runs.
    INPUT_SCRIPT& then(std::function<void()> step);
    /// Adds a step that waits until the condition holds.
    INPUT_SCRIPT& wait_until(std::function<bool()> condition);

    /// Begins; the first step runs when the event loop does.
    void start();
    /// Runs the event loop until all steps are through. False where the script failed.
    bool finish();
    /// Both: for input that itself brings the nested loop about.
    bool run();

private:
    struct IMPL;
    std::unique_ptr<IMPL> m_impl;
};
