#pragma once

#include "tolv_assignment.h"

#include <QString>

/// Assignments in a text file (UTF-8), which people can read and tools can compare. The first line is
///
///     norvane-constraints 1
///
/// and each further line an assignment: "on" or "off", then its seven texts, a tab between each two; empty ones at the end
/// are left out. In a text "\\" stands for a backslash, "\t", "\n" and "\r" for a tab and the ends of lines. Empty lines
/// count for nothing.

/// Reads a file. On failure the list is left alone, and the answer is what is wrong and in which line; empty where all is
/// well.
QString assignment_file_read(const QString& file, TOLV_ASSIGNMENT_LIST* assignments);

/// Writes a file. An earlier one is replaced when all is written, and stays when that fails. Answers as above.
QString assignment_file_write(const QString& file, const TOLV_ASSIGNMENT_LIST& assignments);
