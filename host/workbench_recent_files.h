#pragma once

#include <QStringList>

/// The files that the user opened last, the latest first, kept in the user's registry.
class WORKBENCH_RECENT_FILES
{
public:
    static constexpr int LARGEST_COUNT = 8;

    /// Reads the list. A list of another version, or of another type, counts as empty.
    static QStringList get();
    /// Puts an absolute path to the front.
    static void add(const QString& file);
    static void clear();
};
