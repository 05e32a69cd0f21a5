#pragma once

#include <QString>

/// A row of the drawing resources as the user reads it.
struct PREFERENCES_NAME
{
    QString group; ///< the tool: "Floorplan"
    QString title; ///< what it is there: "Net line"

    /// From the enumerator's name: TOLV_FLP_NET_LINE_COLOR is the "Net line" of the "Floorplan". A row of no known tool
    /// is of the group "Other".
    static PREFERENCES_NAME from_enumerator(const QString& name);
};
