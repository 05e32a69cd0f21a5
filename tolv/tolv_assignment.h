#pragma once

#include "tolv_export.h"

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariant>

/// One assignment of a design, as tools hand it to each other by copy, paste and drag. The library carries it and gives
/// its fields no meaning; what a field stands for is agreed among the tools.
///
/// The fields are public. The texts and the flag travel in TOLV_DATA_TRANSFER_MANAGER's payload in the order in which
/// they stand here; `m_value` stays in the process, and with the very object it was set on: a copy has none.
class TOLV_EXPORT TOLV_ASSIGNMENT
{
public:
    TOLV_ASSIGNMENT();
    ~TOLV_ASSIGNMENT();
    TOLV_ASSIGNMENT(const TOLV_ASSIGNMENT& other);
    /// Takes over texts and flag. The value of the target is invalid behind it.
    TOLV_ASSIGNMENT& operator=(const TOLV_ASSIGNMENT& other);

    /// Back to a new record's texts and flag; the value stays as it is.
    void reset();

    QVariant m_value;   ///< a tool's own addition; neither copied nor streamed
    QString m_field_1;  ///< first text; null in a new record, as are the others
    QString m_field_2;  ///< second text
    QString m_field_3;  ///< third text
    QString m_field_4;  ///< fourth text
    bool m_flag = true; ///< stands between the fourth and the fifth text in the payload
    QString m_field_5;  ///< fifth text
    QString m_field_6;  ///< sixth text
    QString m_field_7;  ///< seventh text
};

/// Assignments in a fixed order, duplicates included. The class is a metatype under its own name, so that a whole list
/// fits into one QVariant.
class TOLV_EXPORT TOLV_ASSIGNMENT_LIST
{
public:
    TOLV_ASSIGNMENT_LIST();
    ~TOLV_ASSIGNMENT_LIST();
    TOLV_ASSIGNMENT_LIST(const TOLV_ASSIGNMENT_LIST& other);
    TOLV_ASSIGNMENT_LIST& operator=(const TOLV_ASSIGNMENT_LIST& other);

    /// Appends a copy of the record.
    void insert(const TOLV_ASSIGNMENT& assignment);

    /// Removes all records. The value stays as it is.
    void clear();

    /// The records, in the order in which they were inserted.
    const QList<TOLV_ASSIGNMENT>& get_list() const;

    /// A tool's own addition to the list, not streamed. Invalid in a new one: a QVariant made as QVariant::UserType would
    /// hold whatever type the process has registered first, or warn if there is none.
    QVariant m_value;

private:
    QList<TOLV_ASSIGNMENT> m_list;
};

Q_DECLARE_METATYPE(TOLV_ASSIGNMENT_LIST)
