#pragma once

#include "test_place.h"

#include <QRegularExpression>
#include <QString>

#include <string>

/// Watches over what Qt says and over the debug records: a warning or a critical message of Qt, or a debug record, that
/// the running test did not expect fails it. The fixtures of gui_test.h do the calling.
///
/// The watch stands in front of the message handler that was in force and hands every message on to it, so that the
/// application's own routing works as in a tool. It is blind from TOLV_APP::copy_argv_for_qt() to the end of the
/// constructor, whose handlers hand nothing on. Messages of any thread count. What the platform plugin
/// says of things that it cannot do ("This plugin does not support ...") and of windows that were closed while the
/// window manager asked about them is nobody's fault and does not count.
class MESSAGE_WATCH
{
public:
    /// Stands in front of the handler that is in force now. To be called again when somebody has installed another.
    static void install();

    /// Begins a test: stands in front, forgets all messages and debug records of before.
    static void begin();

    /// Ends a test: fails it for each unexpected message and record since begin(), with its text, and forgets them.
    static void end(TEST_PLACE place = TEST_PLACE::here());
};

/// Expects a warning or critical message of Qt for a scope. Messages that fit do not fail the test; that none came
/// does.
class SCOPED_EXPECTED_WARNING
{
public:
    /// A message that contains the text.
    explicit SCOPED_EXPECTED_WARNING(const char* part, TEST_PLACE place = TEST_PLACE::here());
    /// A message in which the expression finds a match.
    explicit SCOPED_EXPECTED_WARNING(const QRegularExpression& expression, TEST_PLACE place = TEST_PLACE::here());
    ~SCOPED_EXPECTED_WARNING();
    SCOPED_EXPECTED_WARNING(const SCOPED_EXPECTED_WARNING&) = delete;
    SCOPED_EXPECTED_WARNING& operator=(const SCOPED_EXPECTED_WARNING&) = delete;

    /// How many messages have fitted so far.
    int get_count() const;

private:
    int m_id;
    TEST_PLACE m_place;
};

/// Expects a debug record for a scope: those under `key` whose text contains `part` do not fail the test; that none
/// came does. The scope must not clear the records.
class SCOPED_EXPECTED_DEBUG_RECORD
{
public:
    SCOPED_EXPECTED_DEBUG_RECORD(const std::string& key, const std::string& part,
                                 TEST_PLACE place = TEST_PLACE::here());
    ~SCOPED_EXPECTED_DEBUG_RECORD();
    SCOPED_EXPECTED_DEBUG_RECORD(const SCOPED_EXPECTED_DEBUG_RECORD&) = delete;
    SCOPED_EXPECTED_DEBUG_RECORD& operator=(const SCOPED_EXPECTED_DEBUG_RECORD&) = delete;

private:
    std::string m_key;
    std::string m_part;
    int m_count_before;
    TEST_PLACE m_place;
};
