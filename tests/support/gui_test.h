#pragma once

#include "message_watch.h"
#include "qt_printers.h"
#include "test_application.h"

#include <gtest/gtest.h>

/// A test of the library that wants no application object. Unexpected Qt warnings and debug records fail it.
class TOLV_TEST : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;
};

/// A test in a complete tool: the entry sequence of a host has run, up to the building of windows. A window, popup or
/// modal dialog that the test leaves open fails it. Derived fixtures call SetUp() first and TearDown() last.
class TOLV_GUI_TEST : public TOLV_TEST
{
protected:
    void SetUp() override;
    void TearDown() override;

    /// The application.
    TEST_APP& app() const;
};

/// A test with a plain QApplication, nothing of the library running.
class PLAIN_GUI_TEST : public TOLV_TEST
{
protected:
    void SetUp() override;
    void TearDown() override;
};
